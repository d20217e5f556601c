#pragma once

#include "base.h"

#include <QMap>
#include <QVariant>
#include <QWidget>

class CommandHandlerInterface;
class KAROModuleInterface;
class PluginHandler;
class Register;
struct Parameter;
struct export_type_t;

class SECONDHOST_EXPORT PluginInterface : public QWidget
{
    Q_OBJECT
public:
    PluginInterface(QString name, QString title, QString key, PluginHandler *handler, QWidget *parent);
    QString name();
    QString key() const;

    virtual QString version() = 0;
    virtual void aboutToExit();
    virtual void setEnabled(bool on);
    virtual void importValue(export_type_t const *, QVariant, QObject *) {}
    virtual void siblingIsVisible(QString const &, bool) {}
    virtual void showPlugin();
    virtual void hidePlugin();
    virtual PluginInterface *clone(QString name, PluginHandler *handler) = 0;
    virtual void init(QWidget *parent) = 0;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

    QString m_name;
    QString m_title;
    QString m_key;
    PluginHandler *m_handler;
};

class SECONDHOST_EXPORT ContainerInterface : public PluginInterface
{
    Q_OBJECT
public:
    ContainerInterface(QString const &name, QString const &title, int type, PluginHandler *handler, QString iconPath,
                       QWidget *parent);
    virtual void handleMessageFromToolsPlugin(int, QString);
    virtual void handleModulePlugin(KAROModuleInterface *, QString) = 0;
    virtual void finished(int) = 0;
    PluginHandler *pluginHandler();
};

#define SECONDHOST_CONTAINER_ID "example.secondhost.ContainerInterface/2.0"
Q_DECLARE_INTERFACE(ContainerInterface, SECONDHOST_CONTAINER_ID)

class SECONDHOST_EXPORT KAROModuleInterface : public PluginInterface
{
    Q_OBJECT
public:
    KAROModuleInterface(QString name, QString key, int axes, unsigned char address, CommandHandlerInterface *channel);
    QString getAliasName() const;
    int numberOfAxes();
    unsigned char moduleAddress();
    CommandHandlerInterface *commandHandlerInterface();
    int getChannel();
    QMap<QString, Parameter> *getParameterMapByName(QString name);

    QMap<QString, QMap<QString, Parameter>> parameterMaps;
    QList<Register *> registers;

    QString version() override;
    PluginInterface *clone(QString, PluginHandler *) override;
    void init(QWidget *) override;

private:
    int m_axes;
    unsigned char m_address;
    CommandHandlerInterface *m_channel;
};

class SECONDHOST_EXPORT PluginHandler
{
public:
    QStringList getModulePluginKeys(bool onlyVisible);
    KAROModuleInterface *getModulePlugin(QString const &key);

    QList<KAROModuleInterface *> modules;
};
