#include "modules/modbus/ModbusLink.h"

#include "modules/modbus/SerialLink.h"
#include "modules/modbus/TcpLink.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace
{

constexpr int msPerSecond = 1000;
constexpr int usPerMs = 1000;

int readEntries(modbus_t *context, const RegisterSpan &span, QVector<quint16> *words)
{
    words->resize(span.count);
    if (span.table == ModbusTable::InputRegister) {
        return modbus_read_input_registers(context, span.address, span.count, words->data());
    }
    if (span.table == ModbusTable::HoldingRegister) {
        return modbus_read_registers(context, span.address, span.count, words->data());
    }
    QVector<quint8> bits(span.count);
    const int count = span.table == ModbusTable::Coil
                          ? modbus_read_bits(context, span.address, span.count, bits.data())
                          : modbus_read_input_bits(context, span.address, span.count, bits.data());
    std::copy(bits.cbegin(), bits.cend(), words->begin());
    return count;
}

ConnectionTrouble troubleOf(int error)
{
    using Kind = ConnectionTrouble::Kind;
    if (error > MODBUS_ENOBASE && error < MODBUS_ENOBASE + MODBUS_EXCEPTION_MAX) {
        return {Kind::Exception, error - MODBUS_ENOBASE, {}};
    }
    switch (error) {
    case ETIMEDOUT:
        return {Kind::NoAnswer, 0, {}};
    case EMBBADSLAVE:
        return {Kind::WrongUnit, -1, {}};
    case EMBBADDATA:
    case EMBMDATA:
        return {Kind::WrongLength, 0, {}};
    case EMBBADCRC:
    case EMBBADEXC:
    case EMBUNKEXC:
        return {Kind::Garbage, 0, {}};
    case ECONNRESET:
    case EPIPE:
    case EBADF:
    case EIO:
    case ENXIO:
    case ENODEV:
        return {Kind::Closed, 0, {}};
    default:
        return {Kind::SystemError, error, {}};
    }
}

} // namespace

WakeSignal::WakeSignal() : m_descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

WakeSignal::~WakeSignal()
{
    ::close(m_descriptor);
}

void WakeSignal::give()
{
    eventfd_write(m_descriptor, 1);
}

int WakeSignal::descriptor() const
{
    return m_descriptor;
}

std::unique_ptr<ModbusLink> ModbusLink::of(const ConnectionSettings &settings, const WakeSignal &stop,
                                           std::function<void()> onEnd)
{
    if (settings.medium == ConnectionSettings::Medium::Tcp) {
        return std::make_unique<TcpLink>(settings, stop, std::move(onEnd));
    }
    return std::make_unique<SerialLink>(settings);
}

ModbusLink::ModbusLink(const ConnectionSettings &settings) : m_settings(settings) {}

ModbusLink::~ModbusLink() = default;

bool ModbusLink::isOpen() const
{
    return m_context != nullptr;
}

void ModbusLink::close()
{
    if (m_context != nullptr) {
        modbus_close(m_context);
        modbus_free(m_context);
        m_context = nullptr;
    }
}

ConnectionTrouble ModbusLink::read(int unit, const RegisterSpan &span, QVector<quint16> *words)
{
    ConnectionTrouble obstacle = prepare(unit, span);
    if (obstacle.kind != ConnectionTrouble::Kind::None) {
        return obstacle;
    }
    QVector<quint16> answer;
    ConnectionTrouble trouble = exchange(unit, span, &answer);
    if (trouble.kind != ConnectionTrouble::Kind::None && trouble.kind != ConnectionTrouble::Kind::Exception) {
        return recover(trouble, unit, span);
    }
    const ConnectionTrouble doubt = confirm();
    if (doubt.kind != ConnectionTrouble::Kind::None) {
        return recover(doubt, unit, span);
    }
    if (trouble.kind == ConnectionTrouble::Kind::None) {
        *words = answer;
    }
    return trouble;
}

ConnectionTrouble ModbusLink::exchange(int unit, const RegisterSpan &span, QVector<quint16> *words)
{
    const int timeoutMs = answerTimeoutMs(span);
    modbus_set_response_timeout(m_context, static_cast<uint32_t>(timeoutMs / msPerSecond),
                                static_cast<uint32_t>(timeoutMs % msPerSecond * usPerMs));
    // Without a time limit between bytes the other one holds for the whole answer: it does not begin anew with each byte.
    modbus_set_byte_timeout(m_context, 0, 0);
    if (modbus_set_slave(m_context, unit) != 0) {
        return {ConnectionTrouble::Kind::SystemError, errno, {}};
    }
    return readEntries(m_context, span, words) == span.count ? ConnectionTrouble() : troubleOf(errno);
}
