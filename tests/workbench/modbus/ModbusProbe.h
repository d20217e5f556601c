#pragma once

#include "modules/modbus/ModbusChannel.h"
#include "modules/modbus/ModbusClock.h"

#include "Exchange.h"
#include "FaultyLine.h"
#include "ModbusServer.h"

#include <QVector>

#include <memory>

using Spans = QVector<RegisterSpan>;

/// A pair of registers of a ModbusServer.
RegisterSpan pairAt(int address, ModbusTable table = ModbusTable::HoldingRegister);
Spans pairsAt(const QVector<int> &addresses);

/// A channel to a ModbusServer, maybe by way of a FaultyLine, that looks at every answer.
class ModbusProbe
{
public:
    /// \param spans what the requests of type 0, 1, ... ask for: pairs of registers
    ModbusProbe(const ConnectionSettings &settings, const Spans &spans, const SurveyedSpans &surveyed = {});

    /// Exchanges all spans as one group; returns whether it was answered. A wrong answer is noted in mistake().
    bool ask();

    /// The first wrong value that was given out, in words; empty when all were right.
    QString mistake() const;

    CommandHandlerInterface::Statistics statistics() const;
    const Command &reply(int index) const;

    static ConnectionSettings tcp(quint16 port);
    static ConnectionSettings serial(const QString &port, int baud);
    static std::optional<ModbusValue> pairAt(const RegisterSpan &span);

    ModbusChannel channel;

private:
    void look();

    const Spans m_spans;
    Exchange m_exchange;
    QString m_mistake;
    quint16 m_lastGeneration = 0;
    bool m_hasGeneration = false;
};

/// A ModbusServer behind a FaultyLine whose late answers come later than they are waited for.
struct FaultyDevice
{
    explicit FaultyDevice(bool isSerial);

    static constexpr int baud = 115200;
    std::unique_ptr<FaultyLine> line;
    std::unique_ptr<ModbusServer> server;
    ConnectionSettings settings; ///< of a client
};

/// Looks at \a condition in every tick of a few ms until it holds; false when it does not in time.
bool waitUntil(const std::function<bool()> &condition, int limitMs = 20000);

/// How late the machine wakes up threads that sleep, ms. Tests of durations allow for it.
class MachineJitter
{
public:
    MachineJitter();
    ~MachineJitter();
    int longestMs() const;

private:
    std::atomic<int> m_longestMs{0};
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
};
