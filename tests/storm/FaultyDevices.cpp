#include "FaultyDevices.h"

#include "modules/modbus/ModbusModule.h"

namespace
{

/// Pairs of registers, too far apart for one request, and what else a module can list.
RegisterMap deviceMap()
{
    RegisterMap map;
    map.title = "Bus; device";
    const auto add = [&map](const char *name, RegisterMap::Group group, RegisterSpan span) {
        RegisterMap::Value value;
        value.name = name;
        value.span = span;
        value.group = group;
        value.format.type = isBitTable(span.table) ? NumberFormat::Type::Bit : NumberFormat::Type::UInt32;
        map.values.append(value);
    };
    add("near", RegisterMap::Group::Axis, {ModbusTable::HoldingRegister, 10, 2});
    add("far", RegisterMap::Group::Axis, {ModbusTable::HoldingRegister, 400, 2});
    add("variable", RegisterMap::Group::Variable, {ModbusTable::InputRegister, 20, 2});
    add("input", RegisterMap::Group::DigitalInput, {ModbusTable::DiscreteInput, 7, 1});
    add("status", RegisterMap::Group::Register, {ModbusTable::HoldingRegister, 200, 2});
    map.values.last().fields.append({"load", QString(), QString(), 8, 6, false});
    return map;
}

} // namespace

FaultyDevices::FaultyDevices()
{
    constexpr int lateMs = 650; // later than it is waited for
    constexpr int faultInterval = 3;
    for (Device &device : m_devices) {
        device.line.lateMs = lateMs;
        device.line.randomFaultInterval = faultInterval;
    }
}

QString FaultyDevices::key(quint32 device)
{
    return QStringLiteral("M%1/bus").arg(device % count);
}

KAROModuleInterface *FaultyDevices::makeModule(quint32 device, PluginHandler *registry) const
{
    static const RegisterMap map = deviceMap();
    ConnectionSettings settings;
    settings.host = "127.0.0.1";
    settings.port = m_devices.at(device % count).line.port();
    return new ModbusModule(key(device), registry, settings, map);
}

qint64 FaultyDevices::takeRequests()
{
    qint64 requests = 0;
    for (Device &device : m_devices) {
        requests += device.server.takeRequests().size();
    }
    return requests;
}

qint64 FaultyDevices::faults() const
{
    qint64 faults = 0;
    for (const Device &device : m_devices) {
        faults += device.line.faultCount;
    }
    return faults;
}
