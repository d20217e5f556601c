#pragma once

#include "FaultyLine.h"
#include "ModbusServer.h"

#include <QString>

#include <array>

class KAROModuleInterface;
class PluginHandler;

/**
 * Modbus devices of the workbench, each behind a line of its own on which every kind of fault happens to the answers.
 * Their threads run in real time: what comes back at which moment is not repeated by a seed.
 */
class FaultyDevices
{
public:
    static constexpr quint32 count = 2;

    FaultyDevices();

    static QString key(quint32 device);
    /// A module that is read from one of the devices; owned by the caller until it is added to \a registry.
    KAROModuleInterface *makeModule(quint32 device, PluginHandler *registry) const;

    /// Number of requests that have reached the devices since the last call.
    qint64 takeRequests();
    /// Number of faults on the lines since the devices were made.
    qint64 faults() const;

private:
    struct Device
    {
        ModbusServer server;
        FaultyLine line{server.port()};
    };
    std::array<Device, count> m_devices;
};
