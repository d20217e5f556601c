#include "modules/modbus/SerialLink.h"

#include "modules/modbus/ModbusClock.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/select.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

namespace
{

using Kind = ConnectionTrouble::Kind;

constexpr int serialAnswerTimeoutMs = 300; // a device's, beside the time that the line takes
constexpr int quietAfterOpenMs = 50;
constexpr int quietAfterFaultMs = 100;
constexpr int lateAnswerMs = 10000; // no answer comes later than that
constexpr int longestListeningMs = 3000;
constexpr int frameBytes = 8 + 5; // of request and answer, without the payload
constexpr int bitsPerByte = 8;
constexpr int bytesPerRegister = 2;
constexpr int lastAddress = 65535;
constexpr int msPerSecond = 1000;
constexpr int usPerSecond = 1000000;
constexpr int nsPerUs = 1000;
/// The silence between frames is 3.5 bytes, and 1.75 ms on lines of more than 19,200 baud.
constexpr double silenceBytes = 3.5;
constexpr int minimumSilenceUs = 1750;

/// Bytes of the entries of \a span in an answer.
int payloadOf(const RegisterSpan &span)
{
    return isBitTable(span.table) ? (span.count + bitsPerByte - 1) / bitsPerByte : span.count * bytesPerRegister;
}

char parityLetter(ConnectionSettings::Parity parity)
{
    return parity == ConnectionSettings::Parity::None ? 'N' : parity == ConnectionSettings::Parity::Even ? 'E' : 'O';
}

/// The group that may use the file at \a path; empty when there is none that has rights of its own.
std::string groupOf(const char *path)
{
    struct stat status = {};
    if (stat(path, &status) != 0 || (status.st_mode & S_IRGRP) == 0 || (status.st_mode & S_IWGRP) == 0) {
        return {};
    }
    group record = {};
    group *found = nullptr;
    char buffer[4096];
    getgrgid_r(status.st_gid, &record, buffer, sizeof buffer, &found);
    return found != nullptr ? found->gr_name : std::string();
}

ConnectionTrouble troubleOfOpen(int error, const char *path)
{
    switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return {Kind::NoPort, 0, {}};
    case EACCES:
    case EPERM:
        return {Kind::NoPermission, 0, groupOf(path)};
    case EBUSY:
    case EWOULDBLOCK:
        return {Kind::PortInUse, 0, {}};
    case ENOTTY:
    case EISDIR:
        return {Kind::NotSerial, 0, {}};
    default:
        return {Kind::SystemError, error, {}};
    }
}

/// Why \a path is no serial port, as errno's value. The library would set up whatever it can open.
int obstacleAt(const char *path)
{
    const int descriptor = ::open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return errno;
    }
    const int obstacle = isatty(descriptor) != 0 ? 0 : ENOTTY;
    ::close(descriptor);
    return obstacle;
}

} // namespace

SerialLink::SerialLink(const ConnectionSettings &settings) : ModbusLink(settings) {}

SerialLink::~SerialLink()
{
    SerialLink::close();
}

ConnectionTrouble SerialLink::open()
{
    const QByteArray path = m_settings.serialPort.toLocal8Bit();
    const int obstacle = obstacleAt(path.constData());
    if (obstacle != 0) {
        return troubleOfOpen(obstacle, path.constData());
    }
    constexpr int dataBits = 8;
    m_context = modbus_new_rtu(path.constData(), m_settings.baud, parityLetter(m_settings.parity), dataBits,
                               m_settings.stopBits);
    // The library needs a unit before it connects; each request sets its own.
    if (m_context == nullptr || modbus_set_slave(m_context, 1) != 0 || modbus_connect(m_context) != 0) {
        const int error = errno;
        modbus_free(m_context);
        m_context = nullptr;
        return troubleOfOpen(error, path.constData());
    }
    const int descriptor = modbus_get_socket(m_context);
    // The lock also keeps out programs of the superuser; the exclusive mode, those that take no lock.
    if (descriptor >= FD_SETSIZE || flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int error = descriptor >= FD_SETSIZE ? EMFILE : errno;
        ModbusLink::close();
        return troubleOfOpen(error, path.constData());
    }
    ioctl(descriptor, TIOCEXCL);
    m_descriptor = descriptor;
    listenUntilQuiet(quietAfterOpenMs);
    return {};
}

void SerialLink::close()
{
    if (m_descriptor >= 0) {
        ioctl(m_descriptor, TIOCNXCL); // a pseudo-terminal would keep it
        m_descriptor = -1;
    }
    ModbusLink::close();
}

ConnectionTrouble SerialLink::check()
{
    pollfd port = {m_descriptor, 0, 0};
    if (m_descriptor < 0 || poll(&port, 1, 0) <= 0 || (port.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0) {
        return {};
    }
    close();
    return {Kind::Closed, 0, {}};
}

int SerialLink::answerTimeoutMs(const RegisterSpan &span) const
{
    const int lineMs = (frameBytes + payloadOf(span)) * m_settings.bitsPerByte() * msPerSecond / m_settings.baud;
    return serialAnswerTimeoutMs + lineMs;
}

ConnectionTrouble SerialLink::prepare(int unit, const RegisterSpan &span)
{
    ConnectionTrouble trouble = check();
    if (trouble.kind != Kind::None) {
        return trouble;
    }
    const qint64 silentUs = (modbusNowNs() - m_lastByteNs) / nsPerUs;
    if (silentUs < silenceUs()) {
        std::this_thread::sleep_for(std::chrono::microseconds(silenceUs() - silentUs));
    }
    if (waitingBytes() > 0 && !listenUntilQuiet(quietAfterFaultMs)) {
        return {Kind::Garbage, 0, {}};
    }
    return getInStep(unit, span);
}

ConnectionTrouble SerialLink::getInStep(int unit, const RegisterSpan &span)
{
    const qint64 oldestNs = modbusNowNs() - lateAnswerMs * modbusNsPerMs;
    m_lost.erase(std::remove_if(m_lost.begin(), m_lost.end(), [=](const Lost &lost) { return lost.timeNs < oldestNs; }),
                 m_lost.end());
    const auto isLost = [this, unit](int payload) {
        return std::any_of(m_lost.cbegin(), m_lost.cend(), [=](const Lost &lost) {
            return lost.unit == unit && (payload == lost.payload || payload == 0);
        });
    };
    if (!isLost(0)) { // of no length at all
        return {};
    }
    RegisterSpan attempt = span;
    const int step = isBitTable(span.table) ? bitsPerByte : 1;
    int count = step;
    for (attempt.count = static_cast<quint16>(count); isLost(payloadOf(attempt)) && count < maximumCount(span.table);) {
        count += step;
        attempt.count = static_cast<quint16>(count);
    }
    if (!attempt.isReadable()) {
        attempt.address = static_cast<quint16>(lastAddress + 1 - count);
    }
    QVector<quint16> words;
    ConnectionTrouble trouble = exchange(unit, attempt, &words);
    // An exception is no answer to those that were lost either: they asked for what the device has.
    if (trouble.kind == Kind::None || trouble.kind == Kind::Exception) {
        trouble = confirm();
    }
    if (trouble.kind != Kind::None) {
        return recover(trouble, unit, attempt);
    }
    m_lost.erase(std::remove_if(m_lost.begin(), m_lost.end(), [=](const Lost &lost) { return lost.unit == unit; }),
                 m_lost.end());
    return {};
}

ConnectionTrouble SerialLink::confirm()
{
    // What follows an answer without the silence that ends a frame makes it doubtful whose answer it was.
    std::this_thread::sleep_for(std::chrono::microseconds(silenceUs()));
    m_lastByteNs = modbusNowNs() - qint64{silenceUs()} * nsPerUs;
    return waitingBytes() > 0 ? ConnectionTrouble{Kind::Garbage, 0, {}} : ConnectionTrouble{};
}

ConnectionTrouble SerialLink::recover(const ConnectionTrouble &trouble, int unit, const RegisterSpan &span)
{
    if (trouble.kind == Kind::Closed || trouble.kind == Kind::SystemError) {
        close();
        return trouble;
    }
    m_lost.append({unit, payloadOf(span), modbusNowNs()});
    listenUntilQuiet(quietAfterFaultMs);
    return trouble.kind == Kind::NoAnswer ? ConnectionTrouble{Kind::NoAnswerOnLine, 0, {}} : trouble;
}

bool SerialLink::listenUntilQuiet(int quietMs)
{
    const qint64 deadlineNs = modbusNowNs() + longestListeningMs * modbusNsPerMs;
    while (modbusNowNs() < deadlineNs) {
        pollfd port = {m_descriptor, POLLIN, 0};
        const int ready = poll(&port, 1, quietMs);
        if (ready == 0) {
            return true;
        }
        char dropped[256];
        if (ready > 0 && ::read(m_descriptor, dropped, sizeof dropped) <= 0 && errno != EAGAIN) {
            return true; // pulled out; the next request finds it
        }
        m_lastByteNs = modbusNowNs();
    }
    return false;
}

int SerialLink::silenceUs() const
{
    const double bytesUs = silenceBytes * m_settings.bitsPerByte() * usPerSecond / m_settings.baud;
    return std::max(minimumSilenceUs, static_cast<int>(bytesUs));
}

int SerialLink::waitingBytes() const
{
    int count = 0;
    return ioctl(m_descriptor, FIONREAD, &count) == 0 ? count : 0;
}
