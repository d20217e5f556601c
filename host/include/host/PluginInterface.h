#pragma once

#include "host/HostExport.h"

#include <QHash>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QWidget>

class ImportFilter;
class PluginHandler;
struct export_type_t;

/**
 * Base of every plugin of the host: modules and containers.
 *
 * The name becomes the object name (so that every clone has a settings group of its own), the title the window title
 * and the icon the window icon. Owned by the host; GUI thread.
 *
 * Plugins override the virtual functions. The getters, and the calls of showPlugin(), hidePlugin() and aboutToExit(),
 * serve the host application.
 */
class HOST_EXPORT PluginInterface : public QWidget
{
    Q_OBJECT

public:
    /**
     * \param type     the host's code for the kind of plugin; not interpreted here
     * \param handler  the registry of module plugins, not owned, may be null
     * \param iconPath a resource path without suffix
     */
    PluginInterface(const QString &name, const QString &title, int type, PluginHandler *handler,
                    const QString &iconPath, QWidget *parent);
    ~PluginInterface() override;

    virtual QString version();
    virtual void aboutToExit();
    virtual void setEnabled(bool enabled);
    virtual void importValue(const export_type_t *type, QVariant value, QObject *source)
    {
        Q_UNUSED(type)
        Q_UNUSED(value)
        Q_UNUSED(source)
    }
    virtual void siblingIsVisible(const QString &name, bool visible)
    {
        Q_UNUSED(name)
        Q_UNUSED(visible)
    }
    virtual void showPlugin();
    virtual void hidePlugin();
    virtual PluginInterface *clone(QString name, PluginHandler *handler);
    virtual void init(QWidget *parent);

    QString name();
    /// The key under which a plugin is registered; the name unless setKey() has set another one.
    QString key() const;
    QString title() const;
    QString iconPath() const;
    int type() const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    void setKey(const QString &key);
    PluginHandler *handler() const;

private:
    QString m_name;
    QString m_title;
    QString m_key;
    QPointer<PluginHandler> m_handler; // not owned
    QString m_iconPath;
    // Not read here: the members of the host's own base class, in its order, so that objects here hold what they hold
    // there.
    QMap<QString, QVariant> m_values;
    QHash<const export_type_t *, QVariant> m_exports;
    QSet<ImportFilter *> m_importFilters;
    QWidget *m_toolWindow = nullptr;  // not owned
    QObject *m_valueSource = nullptr; // not owned
    int m_type = 0;
};
