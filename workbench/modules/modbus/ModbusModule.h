#pragma once

#include "modules/modbus/ModbusChannel.h"
#include "modules/modbus/RegisterMap.h"

#include "host/KAROModuleInterface.h"

#include <QVector>

struct RegisterMapRow;

/**
 * A device that is reached over Modbus: it lists what its register map describes, and is only read.
 *
 * It is there whether the device answers or not, so that curves keep their sources when a connection drops. Owned by the
 * registry that it is added to, like every module. GUI thread.
 */
class ModbusModule : public KAROModuleInterface
{
    Q_OBJECT

public:
    /// \param key the key for the registry, for example "DEV0/Servo"
    ModbusModule(const QString &key, PluginHandler *handler, const ConnectionSettings &connection,
                 const RegisterMap &map);

    QString getAliasName() const override;
    int numberOfAxes() override;
    unsigned char moduleAddress() override; ///< The number of the unit.
    CommandHandlerInterface *commandHandlerInterface() override;
    int getChannel() override;
    QMap<QString, Parameter> *getParameterMapByName(QString name) override;
    QList<Register *> registers() const override;

    /// How the connection is doing.
    ModbusChannel::State state() const;

private:
    ModbusModule(const QString &key, PluginHandler *handler, const ConnectionSettings &connection,
                 const RegisterMap &map, const QVector<RegisterMapRow> &rows);

    void addParameter(const RegisterMapRow &row);
    void addRegister(const RegisterMapRow &row);

    const QString m_alias;
    const int m_axes;
    const unsigned char m_address;
    ModbusChannel m_channel;
    QMap<QString, QMap<QString, Parameter>> m_parameterMaps;
    QList<Register *> m_registers; // children
};
