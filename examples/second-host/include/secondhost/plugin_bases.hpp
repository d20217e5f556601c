// The bases of all plugins, what a module offers, and the registry of modules.
#pragma once

#include <QHash>
#include <QMap>
#include <QSet>
#include <QVariant>
#include <QWidget>

#include "secondhost/constants.hpp"

class CommandHandlerInterface;
class ImportFilter;
class KAROModuleInterface;
class PluginHandler;
class Register;
struct Parameter;
struct export_type_t;

class SECONDHOST_API PluginInterface : public QWidget {
  Q_OBJECT

 public:
  PluginInterface(QString name, QString title, QString icon_path,
                  PluginHandler* handler, QWidget* parent);

  virtual QString version();
  virtual void aboutToExit();
  virtual void setEnabled(bool enabled);
  virtual void importValue(export_type_t const*, QVariant, QObject*) {}
  virtual void siblingIsVisible(QString const&, bool) {}
  virtual void showPlugin();
  virtual void hidePlugin();
  virtual PluginInterface* clone(QString name, PluginHandler* handler);
  virtual void init(QWidget* parent);

  QString name();
  QString key() const;

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

  QString name_;
  QString title_;
  QString icon_path_;
  PluginHandler* handler_;
  QString key_;
  QMap<QString, QVariant> values_;
  QHash<export_type_t const*, QVariant> exports_;
  QSet<ImportFilter*> filters_;
  void* reserved_[2] = {nullptr, nullptr};
};

class SECONDHOST_API ContainerInterface : public PluginInterface {
  Q_OBJECT

 public:
  ContainerInterface(QString const& name, QString const& title, int type,
                     PluginHandler* handler, QString icon_path,
                     QWidget* parent);
  virtual void handleMessageFromToolsPlugin(int code, QString message);
  virtual void handleModulePlugin(KAROModuleInterface* module, QString name);
  virtual void finished(int code);

 protected:
  PluginHandler* pluginHandler();
};

#define SECONDHOST_CONTAINER "example.secondhost.ContainerInterface/2.0"
Q_DECLARE_INTERFACE(ContainerInterface, SECONDHOST_CONTAINER)

class SECONDHOST_API KAROModuleInterface : public PluginInterface {
  Q_OBJECT

 public:
  KAROModuleInterface(QString name, QString key);
  QString getAliasName() const;
  int numberOfAxes();
  int moduleAddress();
  CommandHandlerInterface* commandHandlerInterface();
  int getChannel();
  QMap<QString, Parameter>* getParameterMapByName(QString name);

  // What a module is made of.
  int axes_ = 1;
  int address_ = 0;
  int channel_ = 0;
  CommandHandlerInterface* command_channel_ = nullptr;
  QMap<QString, QMap<QString, Parameter>> parameters_;
  QList<Register*> registers_;
};

class SECONDHOST_API PluginHandler {
 public:
  QStringList getModulePluginKeys(bool with_hidden);
  PluginInterface* getModulePlugin(QString const& key);

  QList<KAROModuleInterface*> modules_;
};
