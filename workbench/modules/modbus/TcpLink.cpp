#include "modules/modbus/TcpLink.h"

#include "modules/modbus/AnswerGate.h"
#include "modules/modbus/ModbusClock.h"

#include <netdb.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <functional>
#include <random>
#include <system_error>

namespace
{

using Kind = ConnectionTrouble::Kind;

constexpr int tcpAnswerTimeoutMs = 500;

struct AddressList
{
    ~AddressList()
    {
        if (first != nullptr) {
            freeaddrinfo(first);
        }
    }
    addrinfo *first = nullptr;
};

ConnectionTrouble troubleOfConnect(int error)
{
    switch (error) {
    case 0:
        return {};
    case ECONNREFUSED:
        return {Kind::Refused, 0, {}};
    case EHOSTUNREACH:
    case ENETUNREACH:
        return {Kind::NoRoute, 0, {}};
    case EACCES:
    case EPERM:
        return {Kind::Forbidden, 0, {}};
    case ETIMEDOUT:
        return {Kind::ConnectTimeout, 0, {}};
    default:
        return {Kind::SystemError, error, {}};
    }
}

/// Waits until \a socket is connected or cannot be; returns errno's value.
int waitForConnect(int socket, int stop, qint64 deadlineNs)
{
    while (true) {
        const qint64 remainingMs = (deadlineNs - modbusNowNs()) / modbusNsPerMs;
        pollfd descriptors[] = {{socket, POLLOUT, 0}, {stop, POLLIN, 0}};
        const int ready = remainingMs > 0 ? poll(descriptors, 2, static_cast<int>(remainingMs)) : 0;
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return ETIMEDOUT;
        }
        if (descriptors[1].revents != 0) {
            return ECANCELED;
        }
        int error = 0;
        socklen_t size = sizeof error;
        getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
        return error;
    }
}

void setUp(int socket)
{
    const auto set = [socket](int level, int option, int value) {
        setsockopt(socket, level, option, &value, sizeof value);
    };
    set(IPPROTO_TCP, TCP_NODELAY, 1);
    // A connection that nobody uses also has to notice that its cable is gone.
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
#ifdef TCP_KEEPIDLE
    set(IPPROTO_TCP, TCP_KEEPIDLE, 2);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 1);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
#endif
}

/// A connected socket, or -1 and errno's value in \a error.
int connectTo(const addrinfo &address, int stop, qint64 deadlineNs, int *error)
{
    const int socket =
        ::socket(address.ai_family, address.ai_socktype | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol);
    if (socket < 0) {
        *error = errno;
        return -1;
    }
    *error = connect(socket, address.ai_addr, address.ai_addrlen) == 0 ? 0 : errno;
    if (*error == EINPROGRESS) {
        *error = waitForConnect(socket, stop, deadlineNs);
    }
    if (*error == 0) {
        setUp(socket);
        return socket;
    }
    ::close(socket);
    return -1;
}

} // namespace

TcpLink::TcpLink(const ConnectionSettings &settings, const WakeSignal &stop, std::function<void()> onEnd)
    : ModbusLink(settings), m_stop(stop), m_onEnd(std::move(onEnd)), m_transaction(std::random_device()() & 0xFFFFU)
{
}

TcpLink::~TcpLink()
{
    TcpLink::close();
}

ConnectionTrouble TcpLink::open()
{
    addrinfo hints = {};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_ADDRCONFIG | AI_NUMERICSERV;
    AddressList addresses;
    const int failure = getaddrinfo(m_settings.host.toUtf8().constData(),
                                    QByteArray::number(m_settings.port).constData(), &hints, &addresses.first);
    if (failure != 0) {
        return {Kind::UnknownHost, 0, gai_strerror(failure)};
    }
    int error = 0;
    int device = -1;
    for (const addrinfo *address = addresses.first; address != nullptr && device < 0; address = address->ai_next) {
        // Each has the whole time: nothing may come back from the first.
        const qint64 deadlineNs = modbusNowNs() + connectTimeoutMs * modbusNsPerMs;
        device = connectTo(*address, m_stop.descriptor(), deadlineNs, &error);
    }
    if (device < 0) {
        return troubleOfConnect(error);
    }
    int ends[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        error = errno;
        ::close(device);
        return {Kind::SystemError, error, {}};
    }
    try {
        m_gate = std::make_unique<AnswerGate>(device, ends[1], &m_transaction, m_onEnd);
    } catch (const std::system_error &caught) { // there may be no more threads
        for (const int descriptor : {device, ends[0], ends[1]}) {
            ::close(descriptor);
        }
        return {Kind::SystemError, caught.code().value(), {}};
    }
    m_context = modbus_new_tcp("127.0.0.1", m_settings.port); // never connects: the socket is given
    if (m_context == nullptr || ends[0] >= FD_SETSIZE) {      // the library waits by select()
        ::close(ends[0]);
        modbus_free(m_context);
        m_context = nullptr;
        m_gate.reset();
        return {Kind::SystemError, EMFILE, {}};
    }
    modbus_set_socket(m_context, ends[0]);
    return {};
}

void TcpLink::close()
{
    ModbusLink::close();
    m_gate.reset();
}

ConnectionTrouble TcpLink::check()
{
    if (m_gate == nullptr || !m_gate->hasEnded()) {
        return {};
    }
    const ConnectionTrouble fault = m_gate->fault();
    close();
    return fault.kind == Kind::None ? ConnectionTrouble{Kind::Closed, 0, {}} : fault;
}

int TcpLink::answerTimeoutMs(const RegisterSpan &span) const
{
    Q_UNUSED(span)
    return tcpAnswerTimeoutMs;
}

ConnectionTrouble TcpLink::prepare(int unit, const RegisterSpan &span)
{
    Q_UNUSED(unit)
    Q_UNUSED(span)
    return check();
}

ConnectionTrouble TcpLink::confirm()
{
    return {}; // the gate has looked at the answer
}

ConnectionTrouble TcpLink::recover(const ConnectionTrouble &trouble, int unit, const RegisterSpan &span)
{
    Q_UNUSED(unit)
    Q_UNUSED(span)
    const ConnectionTrouble fault = m_gate->fault();
    close();
    return fault.kind == Kind::None ? trouble : fault;
}
