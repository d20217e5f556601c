#include "ModbusProbe.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace
{

ModbusLookup lookupOf(const Spans &spans)
{
    return [spans](const Command &request) -> std::optional<ModbusValue> {
        const bool isKnown = request.type() < spans.size();
        return isKnown ? ModbusProbe::pairAt(spans.at(request.type())) : std::nullopt;
    };
}

QVector<Command> requestsFor(int count)
{
    QVector<Command> requests;
    for (int type = 0; type < count; ++type) {
        requests.append(requestFor(0, 6, 0, type));
    }
    return requests;
}

} // namespace

RegisterSpan pairAt(int address, ModbusTable table)
{
    return {table, static_cast<quint16>(address), 2};
}

Spans pairsAt(const QVector<int> &addresses)
{
    Spans spans;
    for (const int address : addresses) {
        spans.append(pairAt(address));
    }
    return spans;
}

ModbusProbe::ModbusProbe(const ConnectionSettings &settings, const Spans &spans, const SurveyedSpans &surveyed)
    : channel(settings, lookupOf(spans), surveyed), m_spans(spans), m_exchange(requestsFor(spans.size()))
{
}

std::optional<ModbusValue> ModbusProbe::pairAt(const RegisterSpan &span)
{
    return ModbusValue{
        span, [](const quint16 *words) { return static_cast<qint32>(quint32{words[0]} << 16 | quint32{words[1]}); }};
}

bool ModbusProbe::ask()
{
    m_exchange.with(&channel);
    const auto isAnswered = [](const CommandCombo &combo) { return combo.reply.status() == Command::Status::Answered; };
    const auto answered = std::count_if(m_exchange.combos.cbegin(), m_exchange.combos.cend(), isAnswered);
    if (answered == m_spans.size()) {
        look();
    } else if (answered > 0 && m_mistake.isEmpty()) {
        m_mistake = QString("%1 of %2 replies were filled").arg(answered).arg(m_spans.size());
    }
    return answered == m_spans.size();
}

void ModbusProbe::look()
{
    QStringList wrong;
    quint16 generation = 0;
    for (int index = 0; index < m_spans.size(); ++index) {
        const auto value = static_cast<quint32>(reply(index).value());
        const RegisterSpan &span = m_spans.at(index);
        const auto own = static_cast<quint16>(value & 0xFFFF);
        if (value >> 16 != ModbusServer::marker(span.table, span.address)) {
            wrong.append(QString("%1 is none of register %2").arg(value, 0, 16).arg(span.address));
        }
        // The requests of a round follow each other, with no other in between.
        if (index > 0 && static_cast<quint16>(own - generation) > 1) {
            wrong.append(QString("register %1 is from another round").arg(span.address));
        }
        generation = own;
    }
    constexpr quint16 halfWay = 0x8000;
    if (m_hasGeneration && static_cast<quint16>(generation - m_lastGeneration) >= halfWay) {
        wrong.append(QString("request %1 was answered before %2").arg(m_lastGeneration).arg(generation));
    }
    m_lastGeneration = generation;
    m_hasGeneration = true;
    if (m_mistake.isEmpty()) {
        m_mistake = wrong.join("; ");
    }
}

QString ModbusProbe::mistake() const
{
    return m_mistake;
}

CommandHandlerInterface::Statistics ModbusProbe::statistics() const
{
    return channel.statistics();
}

const Command &ModbusProbe::reply(int index) const
{
    return m_exchange.reply(index);
}

ConnectionSettings ModbusProbe::tcp(quint16 port)
{
    ConnectionSettings settings;
    settings.host = "127.0.0.1";
    settings.port = port;
    return settings;
}

ConnectionSettings ModbusProbe::serial(const QString &port, int baud)
{
    ConnectionSettings settings;
    settings.medium = ConnectionSettings::Medium::Rtu;
    settings.serialPort = port;
    settings.baud = baud;
    settings.parity = ConnectionSettings::Parity::None;
    return settings;
}

FaultyDevice::FaultyDevice(bool isSerial)
{
    if (isSerial) {
        line = std::make_unique<FaultyLine>();
        server = std::make_unique<ModbusServer>(line->serverPort(), baud);
        settings = ModbusProbe::serial(line->clientPort(), baud);
    } else {
        server = std::make_unique<ModbusServer>();
        line = std::make_unique<FaultyLine>(server->port());
        settings = ModbusProbe::tcp(line->port());
    }
    line->lateMs = isSerial ? 450 : 650;
}

bool waitUntil(const std::function<bool()> &condition, int limitMs)
{
    constexpr unsigned long tickMs = 7;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limitMs) {
            return false;
        }
        QThread::msleep(tickMs);
    }
    return true;
}

MachineJitter::MachineJitter()
    : m_thread([this] {
        using namespace std::chrono;
        while (!m_isEnding) {
            const auto begin = steady_clock::now();
            std::this_thread::sleep_for(milliseconds(2));
            const auto lateMs = duration_cast<milliseconds>(steady_clock::now() - begin).count() - 2;
            m_longestMs = std::max<int>(m_longestMs, static_cast<int>(lateMs));
        }
    })
{
}

MachineJitter::~MachineJitter()
{
    m_isEnding = true;
    m_thread.join();
}

int MachineJitter::longestMs() const
{
    return m_longestMs;
}
