#include "modules/modbus/DeviceTest.h"

#include "modules/modbus/ModbusClock.h"
#include "modules/modbus/ModbusConnection.h"
#include "modules/modbus/RegisterMapRows.h"

#include <QLocale>

namespace
{

using Kind = ConnectionTrouble::Kind;

/// Trouble that waiting does not end.
bool isFinal(Kind kind)
{
    switch (kind) {
    case Kind::Settings:
    case Kind::UnknownHost:
    case Kind::Refused:
    case Kind::NoRoute:
    case Kind::Forbidden:
    case Kind::NoPort:
    case Kind::NoPermission:
    case Kind::PortInUse:
    case Kind::NotSerial:
    case Kind::SystemError:
    case Kind::Exception:
        return true;
    default:
        return false;
    }
}

} // namespace

DeviceTest::DeviceTest(const DeviceSettings &settings, QObject *parent)
    : QObject(parent), m_settings(settings), m_map(readRegisterMapFile(settings.mapFile))
{
    if (m_map.error.isEmpty()) {
        m_span = m_map.map.values.constFirst().span;
    }
    connect(&m_timer, &QTimer::timeout, this, &DeviceTest::look);
}

DeviceTest::~DeviceTest()
{
    if (m_connection != nullptr) {
        m_connection->removeUnit(m_settings.connection.unit, m_use);
    }
}

void DeviceTest::start()
{
    if (m_settings.connection.problem().isEmpty()) {
        m_connection = ModbusConnection::of(m_settings.connection);
        m_use = m_connection->addUnit(m_settings.connection.unit);
    }
    m_clock.start();
    m_startNs = modbusNowNs();
    m_timer.start(lookIntervalMs);
}

void DeviceTest::look()
{
    if (m_connection == nullptr) {
        finish(false, m_settings.connection.problem());
        return;
    }
    const int unit = m_settings.connection.unit;
    ModbusConnection::Answer answer;
    qint64 waitedNs = 0;
    bool wasFirst = false;
    const auto outcome = m_connection->newest(unit, {m_span}, 0, 0, &answer, &waitedNs, &wasFirst);
    // What was known before is no sign that the device answers now.
    if (outcome == ModbusConnection::Outcome::Answered && answer.timeNs >= m_startNs) {
        const ModbusConnection::SpanAnswer &span = answer.spans.constFirst();
        finish(span.exception == 0 && m_map.error.isEmpty(), answerWords(span.exception, span.words.constData()));
        return;
    }
    const ModbusConnection::DeviceState state = m_connection->state(unit);
    const ConnectionTrouble &trouble = state.trouble;
    const bool isNew = state.troubleNs >= m_startNs;
    const bool isLate = m_clock.hasExpired(patienceMs);
    if ((isFinal(trouble.kind) && isNew) ||
        (isLate && trouble.kind != Kind::None && trouble.kind != Kind::Connecting)) {
        finish(false, trouble.words());
    } else if (isLate) {
        finish(false, tr("Nothing came within %1 s.").arg(patienceMs / 1000));
    }
}

void DeviceTest::finish(bool isAnswered, const QString &words)
{
    m_timer.stop();
    if (m_connection != nullptr) {
        m_connection->removeUnit(m_settings.connection.unit, m_use);
        m_connection.reset();
    }
    emit finished(isAnswered, words);
}

QString DeviceTest::answerWords(int exception, const quint16 *words) const
{
    const QString exceptionText =
        exception == 0 ? QString()
                       : tr("exception %1: %2").arg(exception).arg(ConnectionTrouble::exceptionName(exception));
    const int unit = m_settings.connection.unit;
    if (!m_map.error.isEmpty()) {
        const QString map = tr("The register map cannot be used: %1").arg(m_map.error);
        return (exception == 0 ? tr("Unit %1 answers.").arg(unit)
                               : tr("Unit %1 answers, with %2.").arg(unit).arg(exceptionText)) +
               QLatin1Char(' ') + map;
    }
    const RegisterMapRow row = registerMapRows(m_map.map).constFirst();
    if (exception != 0) {
        return tr("Unit %1 answers, but not for \"%2\": %3. Is it the right register map?")
            .arg(unit)
            .arg(row.shownName(), exceptionText);
    }
    return tr("Unit %1 answers: \"%2\" is %3.")
        .arg(unit)
        .arg(row.shownName(), QLocale().toString(row.value.decode(words)));
}
