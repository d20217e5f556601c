#include "ModbusServer.h"

#include "GuardedTest.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>

namespace
{

constexpr int pollMs = 50;

} // namespace

ModbusServer::ModbusServer() : m_context(modbus_new_tcp("127.0.0.1", 0))
{
    makeRegisters();
    m_listener = modbus_tcp_listen(m_context, 5);
    REQUIRE(m_listener >= 0);
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size);
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { runTcp(); });
}

ModbusServer::ModbusServer(const QString &serialPort, int baud)
    : m_context(modbus_new_rtu(qPrintable(serialPort), baud, 'N', 8, 1))
{
    makeRegisters();
    REQUIRE(modbus_set_slave(m_context, 1) == 0);
    REQUIRE(modbus_connect(m_context) == 0);
    m_thread = std::thread([this] { runSerial(); });
}

ModbusServer::~ModbusServer()
{
    m_isEnding = true;
    m_thread.join();
    if (m_listener >= 0) {
        close(m_listener);
    } else {
        modbus_close(m_context);
    }
    modbus_mapping_free(m_registers);
    modbus_free(m_context);
}

quint16 ModbusServer::port() const
{
    return m_port;
}

QVector<RegisterSpan> ModbusServer::takeRequests()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_requests, {});
}

quint16 ModbusServer::marker(ModbusTable table, int address)
{
    constexpr unsigned oddFactor = 40503; // so that each of 65536 addresses has its own
    return static_cast<quint16>(static_cast<unsigned>(address) * oddFactor + (table == ModbusTable::InputRegister));
}

void ModbusServer::makeRegisters()
{
    REQUIRE(m_context != nullptr);
    m_registers = modbus_mapping_new(bitCount, bitCount, registerCount, registerCount);
    for (int address = 0; address < bitCount; ++address) {
        m_registers->tab_bits[address] = address % 3 == 0;
        m_registers->tab_input_bits[address] = address % 5 == 0;
    }
    for (int address = 0; address < registerCount; address += 2) {
        m_registers->tab_registers[address] = marker(ModbusTable::HoldingRegister, address);
        m_registers->tab_input_registers[address] = marker(ModbusTable::InputRegister, address);
    }
    modbus_set_indication_timeout(m_context, 0, pollMs * 1000);
}

void ModbusServer::runTcp()
{
    // One client at a time, but a new one replaces the one before.
    int client = -1;
    while (!m_isEnding) {
        pollfd sockets[] = {{m_listener, POLLIN, 0}, {client, POLLIN, 0}};
        if (poll(sockets, client >= 0 ? 2 : 1, pollMs) <= 0) {
            continue;
        }
        if (sockets[0].revents != 0) {
            if (client >= 0) {
                close(client);
            }
            client = accept(m_listener, nullptr, nullptr);
            modbus_set_socket(m_context, client);
        } else if (sockets[1].revents != 0) {
            unsigned char query[MODBUS_TCP_MAX_ADU_LENGTH];
            const int size = modbus_receive(m_context, query);
            if (size > 0) {
                answer(query, size);
            } else if (size < 0) {
                close(client);
                client = -1;
            }
        }
    }
    if (client >= 0) {
        close(client);
    }
}

void ModbusServer::runSerial()
{
    while (!m_isEnding) {
        unsigned char query[MODBUS_RTU_MAX_ADU_LENGTH];
        const int size = modbus_receive(m_context, query);
        if (size > 0) {
            answer(query, size);
        } else if (size < 0 && errno != ETIMEDOUT) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1)); // the proxy is restarting the line
            modbus_flush(m_context);
        }
    }
}

void ModbusServer::answer(const unsigned char *query, int size)
{
    const unsigned char *const function = query + modbus_get_header_length(m_context);
    constexpr ModbusTable tables[] = {ModbusTable::Coil, ModbusTable::DiscreteInput, ModbusTable::HoldingRegister,
                                      ModbusTable::InputRegister};
    const RegisterSpan span{tables[(*function - 1) & 3], static_cast<quint16>(function[1] * 256 + function[2]),
                            static_cast<quint16>(function[3] * 256 + function[4])};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_requests.append(span);
    }
    ++m_generation;
    for (int address = 1; address < registerCount; address += 2) {
        m_registers->tab_registers[address] = m_generation;
        m_registers->tab_input_registers[address] = m_generation;
    }
    if (answerTimeMs > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(answerTimeMs));
    }
    const bool isMissing = span.table == ModbusTable::HoldingRegister &&
                           ((span.address <= hole && hole < span.end()) || span.count > maximumSpan);
    if (isSilent) {
        return;
    }
    if (exception != 0 || isMissing) {
        const int code = isMissing ? int{MODBUS_EXCEPTION_ILLEGAL_DATA_ADDRESS} : exception.load();
        modbus_reply_exception(m_context, query, static_cast<unsigned>(code));
    } else {
        modbus_reply(m_context, query, size, m_registers);
    }
}
