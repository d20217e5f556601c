#pragma once

#include "host/CommandCombo.h"
#include "host/ContainerInterface.h"

#include <QTimer>

#include <vector>

class QLabel;
class QListWidget;

/**
 * A container that counts and lists the connected modules, and updates the list when they come and go. For each module
 * with motors it reads one value of the first motor, twice a second.
 *
 * The host creates one object by the constructor without arguments, which it never shows, and clones it for every
 * container that the user opens. The clones are owned by the host. GUI thread.
 */
class ModuleList : public ContainerInterface
{
    Q_OBJECT
    // The host reads this metadata before it runs any code of the file; the JSON file declares a container.
    Q_PLUGIN_METADATA(IID ContainerInterface_iid FILE "ModuleList.json")
    Q_INTERFACES(ContainerInterface)

public:
    ModuleList();
    ModuleList(const QString &name, PluginHandler *handler);

    QString version() override;
    ModuleList *clone(QString name, PluginHandler *handler) override;

    /// Called at every opening; \a window is the new parent and is destroyed when the container is closed.
    void init(QWidget *window) override;

    /// Called when a module comes or goes, until the clone is destroyed, even while it is not shown.
    void handleModulePlugin(KAROModuleInterface *module, QString message) override;

private:
    /// A module in the list, and the value that is read from it.
    struct Row
    {
        QString key;
        QString text;       ///< without the value
        QString valueName;  ///< empty when nothing is read
        CommandCombo combo; ///< the request, and the reply that the channel fills in
    };

    void showModules();
    void readValues();

    QLabel *m_count = nullptr;     // null before the first opening
    QListWidget *m_list = nullptr; // the same
    std::vector<Row> m_rows;       // as in the list
    QTimer m_timer;
};
