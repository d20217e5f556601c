#pragma once

#include "modules/modbus/RegisterSpan.h"

#include <QString>
#include <QVector>

#include <modbus.h>

#include <atomic>
#include <mutex>
#include <thread>

/**
 * A Modbus device of unit 1, served by libmodbus' own server functions in a thread, whose registers show wrong answers.
 *
 * Both tables of registers hold pairs: the first of a pair is made from its address and table, the second counts the
 * requests, so that registers from two requests are told apart. Coil n is on when n is a multiple of 3, discrete input
 * n when it is one of 5.
 */
class ModbusServer
{
public:
    static constexpr int registerCount = 1000;
    static constexpr int bitCount = 3000;

    ModbusServer();                                    ///< over TCP, on a free port of the loopback
    ModbusServer(const QString &serialPort, int baud); ///< 8N1
    ~ModbusServer();
    ModbusServer(const ModbusServer &) = delete;
    ModbusServer &operator=(const ModbusServer &) = delete;

    quint16 port() const;

    /// All requests so far, or the ones since the last call.
    QVector<RegisterSpan> takeRequests();

    /// What the first of the pair of registers at \a address holds.
    static quint16 marker(ModbusTable table, int address);

    std::atomic<bool> isSilent{false};
    std::atomic<int> answerTimeMs{0};
    std::atomic<int> exception{0};     ///< answered to every request unless 0
    std::atomic<int> hole{-1};         ///< a holding register that is missing: requests that touch it are refused
    std::atomic<int> maximumSpan{125}; ///< longer requests are refused

private:
    void makeRegisters();
    void runTcp();
    void runSerial();
    void serve();
    void answer(const unsigned char *query, int size);

    modbus_t *m_context = nullptr;
    modbus_mapping_t *m_registers = nullptr;
    int m_listener = -1;
    quint16 m_port = 0;
    quint16 m_generation = 0;
    std::atomic<bool> m_isEnding{false};
    std::mutex m_mutex;
    QVector<RegisterSpan> m_requests; // guarded
    std::thread m_thread;
};
