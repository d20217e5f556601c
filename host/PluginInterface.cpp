#include "host/PluginInterface.h"

#include "host/PluginHandler.h"

#include <QHideEvent>
#include <QIcon>
#include <QShowEvent>

PluginInterface::PluginInterface(const QString &name, const QString &title, int type, PluginHandler *handler,
                                 const QString &iconPath, QWidget *parent)
    : QWidget(parent), m_name(name), m_title(title), m_key(name), m_handler(handler), m_iconPath(iconPath), m_type(type)
{
    setObjectName(name);
    setWindowTitle(title);
    if (!iconPath.isEmpty()) {
        setWindowIcon(QIcon(iconPath));
    }
}

PluginInterface::~PluginInterface() = default;

QString PluginInterface::version()
{
    return {};
}

void PluginInterface::aboutToExit() {}

void PluginInterface::setEnabled(bool enabled)
{
    QWidget::setEnabled(enabled);
}

void PluginInterface::showPlugin()
{
    show();
    window()->show();
    window()->raise();
    window()->activateWindow();
}

void PluginInterface::hidePlugin()
{
    window()->hide();
}

PluginInterface *PluginInterface::clone(QString name, PluginHandler *handler)
{
    Q_UNUSED(name)
    Q_UNUSED(handler)
    return nullptr;
}

void PluginInterface::init(QWidget *parent)
{
    Q_UNUSED(parent)
}

QString PluginInterface::name()
{
    return m_name;
}

QString PluginInterface::key() const
{
    return m_key;
}

QString PluginInterface::title() const
{
    return m_title;
}

QString PluginInterface::iconPath() const
{
    return m_iconPath;
}

int PluginInterface::type() const
{
    return m_type;
}

void PluginInterface::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
}

void PluginInterface::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
}

void PluginInterface::setKey(const QString &key)
{
    m_key = key;
}

PluginHandler *PluginInterface::handler() const
{
    return m_handler.data();
}
