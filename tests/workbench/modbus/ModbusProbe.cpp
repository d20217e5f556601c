#include "ModbusProbe.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace
{

ModbusLookup lookupOf(const QVector<RegisterSpan> &spans)
{
    return [spans](const Command &request) -> std::optional<ModbusValue> {
        const bool isKnown = request.type() < spans.size();
        return isKnown ? ModbusProbe::pairAt(spans.at(request.type())) : std::nullopt;
    };
}

} // namespace

ModbusProbe::ModbusProbe(const ConnectionSettings &settings, const QVector<RegisterSpan> &spans,
                         const SurveyedSpans &surveyed)
    : channel(settings, lookupOf(spans), surveyed), m_spans(spans), m_combos(spans.size())
{
    for (int index = 0; index < m_combos.size(); ++index) {
        m_combos[index].request.setType(static_cast<unsigned short>(index));
        m_combos[index].request.setCommand(6);
    }
}

std::optional<ModbusValue> ModbusProbe::pairAt(const RegisterSpan &span)
{
    return ModbusValue{
        span, [](const quint16 *words) { return static_cast<qint32>(quint32{words[0]} << 16 | quint32{words[1]}); }};
}

bool ModbusProbe::ask()
{
    QList<CommandCombo *> combos;
    for (CommandCombo &combo : m_combos) {
        combos.append(&combo);
    }
    channel.sendCommandCombos(combos);
    const auto isAnswered = [](const CommandCombo &combo) { return combo.reply.status() == Command::Status::Answered; };
    const auto answered = std::count_if(m_combos.cbegin(), m_combos.cend(), isAnswered);
    if (answered == m_combos.size()) {
        look();
    } else if (answered > 0 && m_mistake.isEmpty()) {
        m_mistake = QStringLiteral("%1 of %2 replies were filled").arg(answered).arg(m_combos.size());
    }
    return answered == m_combos.size();
}

void ModbusProbe::look()
{
    QStringList wrong;
    quint16 generation = 0;
    for (int index = 0; index < m_combos.size(); ++index) {
        const auto value = static_cast<quint32>(m_combos.at(index).reply.value());
        const RegisterSpan &span = m_spans.at(index);
        const auto own = static_cast<quint16>(value & 0xFFFF);
        if (value >> 16 != ModbusServer::marker(span.table, span.address)) {
            wrong.append(QStringLiteral("%1 is none of register %2").arg(value, 0, 16).arg(span.address));
        }
        // The requests of a round follow each other, with no other in between.
        if (index > 0 && static_cast<quint16>(own - generation) > 1) {
            wrong.append(QStringLiteral("register %1 is from another round").arg(span.address));
        }
        generation = own;
    }
    constexpr quint16 halfWay = 0x8000;
    if (m_hasGeneration && static_cast<quint16>(generation - m_lastGeneration) >= halfWay) {
        wrong.append(QStringLiteral("request %1 was answered before %2").arg(m_lastGeneration).arg(generation));
    }
    m_lastGeneration = generation;
    m_hasGeneration = true;
    if (m_mistake.isEmpty()) {
        m_mistake = wrong.join(QStringLiteral("; "));
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
    return m_combos.at(index).reply;
}

ConnectionSettings ModbusProbe::tcp(quint16 port)
{
    ConnectionSettings settings;
    settings.host = QStringLiteral("127.0.0.1");
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
