#pragma once

#include "host/ContainerInterface.h"

class QLabel;
class QListWidget;

/**
 * A container that counts and lists the connected modules, and follows when they come and go.
 *
 * The host makes one object by the constructor without arguments, which it never shows, and clones it for every
 * container that a person wants. The clones are owned by the host. GUI thread.
 */
class ModuleList : public ContainerInterface
{
    Q_OBJECT
    // What the host reads in the file before it runs any of its code; the JSON file says "this is a container".
    Q_PLUGIN_METADATA(IID ContainerInterface_iid FILE "ModuleList.json")
    Q_INTERFACES(ContainerInterface)

public:
    ModuleList();
    ModuleList(const QString &name, PluginHandler *handler);

    QString version() override;
    ModuleList *clone(QString name, PluginHandler *handler) override;

    /// Called at every opening; \a window is the new parent, and gone when the container is closed.
    void init(QWidget *window) override;

    /// A module came or went; called for as long as the clone lives, shown or not.
    void handleModulePlugin(KAROModuleInterface *module, QString message) override;

private:
    void showModules();

    QLabel *m_count = nullptr;     // null before the first opening
    QListWidget *m_list = nullptr; // the same
};
