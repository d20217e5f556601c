#include "FaultyLine.h"

#include "GuardedTest.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <QThread>

#include <iterator>

namespace
{

constexpr int pollMs = 50;
constexpr int tcpHeaderSize = 6;
constexpr int crcSize = 2;
constexpr int withinLimitMs = 60;
constexpr unsigned long splitUs = 200;
constexpr unsigned long trickleUs = 60000;

sockaddr_in loopback(quint16 port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

/// The checksum of serial frames: CRC-16 with the polynomial 0xA001, low byte first.
QByteArray crcOf(const QByteArray &bytes)
{
    unsigned crc = 0xFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? (crc >> 1) ^ 0xA001U : crc >> 1;
        }
    }
    return QByteArray().append(static_cast<char>(crc & 0xFF)).append(static_cast<char>(crc >> 8));
}

bool writeAll(int descriptor, bool isSocket, const QByteArray &bytes)
{
    const auto count = static_cast<size_t>(bytes.size());
    return (isSocket ? send(descriptor, bytes.constData(), count, MSG_NOSIGNAL)
                     : write(descriptor, bytes.constData(), count)) == bytes.size();
}

/// Empty at the end of a connection.
QByteArray readFrom(int descriptor)
{
    char bytes[600];
    const ssize_t size = read(descriptor, bytes, sizeof bytes);
    return QByteArray(bytes, static_cast<int>(qMax<ssize_t>(0, size)));
}

QString nameOf(int terminal)
{
    char name[64];
    return ptsname_r(terminal, name, sizeof name) == 0 ? QString::fromLatin1(name) : QString();
}

void openPair(int *ownEnd, int *otherEnd)
{
    REQUIRE(openpty(ownEnd, otherEnd, nullptr, nullptr, nullptr) == 0);
    termios settings = {};
    tcgetattr(*otherEnd, &settings);
    cfmakeraw(&settings);
    tcsetattr(*otherEnd, TCSANOW, &settings);
}

} // namespace

FaultyLine::FaultyLine(quint16 serverPort) : m_isSerial(false), m_serverTcpPort(serverPort)
{
    m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    REQUIRE(bind(m_listener, reinterpret_cast<const sockaddr *>(&address), size) == 0);
    REQUIRE(listen(m_listener, 5) == 0);
    m_thread = std::thread([this] { run(); });
}

FaultyLine::FaultyLine() : m_isSerial(true)
{
    openPair(&m_client, &m_clientSlave);
    openPair(&m_server, &m_serverSlave);
    m_thread = std::thread([this] { run(); });
}

FaultyLine::~FaultyLine()
{
    m_isEnding = true;
    m_thread.join();
    for (const int descriptor : {m_listener, m_client, m_server, m_clientSlave, m_serverSlave}) {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
}

quint16 FaultyLine::port() const
{
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &size);
    return ntohs(address.sin_port);
}

QString FaultyLine::clientPort() const
{
    return nameOf(m_client);
}

QString FaultyLine::serverPort() const
{
    return nameOf(m_server);
}

void FaultyLine::run()
{
    while (!m_isEnding) {
        if (repeatsNow) {
            sendToClient(m_answerBefore);
            repeatsNow = false;
        }
        pollfd ends[] = {{m_listener, POLLIN, 0}, {m_client, POLLIN, 0}, {m_server, POLLIN, 0}};
        if (poll(ends, std::size(ends), pollMs) <= 0) {
            continue;
        }
        if (ends[0].revents != 0) {
            acceptClient();
        } else if (m_client >= 0 && ends[1].revents != 0) {
            passRequest();
        } else if (m_server >= 0 && ends[2].revents != 0) {
            passAnswer();
        }
    }
}

void FaultyLine::acceptClient()
{
    dropClient();
    m_client = accept(m_listener, nullptr, nullptr);
    m_server = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(m_serverTcpPort);
    if (connect(m_server, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        dropClient();
    }
    const int on = 1;
    setsockopt(m_client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void FaultyLine::passRequest()
{
    const QByteArray request = readFrom(m_client);
    waitForLine(request.size());
    if (request.isEmpty() || (fault != RequestLost && !writeAll(m_server, !m_isSerial, request))) {
        dropClient();
    }
}

void FaultyLine::passAnswer()
{
    const QByteArray answer = readFrom(m_server);
    if (answer.isEmpty()) {
        return dropClient();
    }
    Fault chosen = fault;
    const int interval = randomFaultInterval;
    if (interval > 0) {
        m_random = m_random * 1664525U + 1013904223U;
        chosen = static_cast<int>((m_random >> 8) % static_cast<unsigned>(interval)) == 0
                     ? static_cast<Fault>((m_random >> 20) % FaultCount)
                     : None;
    }
    if (chosen != None) {
        ++faultCount;
    }
    apply(chosen, answer);
    m_answerBefore = answer;
}

void FaultyLine::apply(Fault chosen, const QByteArray &answer)
{
    switch (chosen) {
    case RequestLost:
    case AnswerLost:
        return;
    case Delayed:
    case Late:
        QThread::msleep(static_cast<unsigned long>(chosen == Late ? int{lateMs} : withinLimitMs));
        return sendToClient(answer);
    case Split:
    case Trickled:
        for (const char byte : answer) {
            sendToClient(QByteArray(1, byte));
            QThread::usleep(chosen == Split ? splitUs : trickleUs);
        }
        return;
    case Twice:
        return sendToClient(answer + answer);
    case Merged:
        return sendToClient(m_answerBefore + answer);
    case Closed:
        sendToClient(answer.left(answer.size() / 2));
        return dropClient();
    default:
        sendToClient(changed(chosen, answer));
    }
}

QByteArray FaultyLine::changed(Fault chosen, QByteArray answer) const
{
    const int unit = m_isSerial ? 0 : tcpHeaderSize;
    const int countPlace = unit + 2; // unit, function, number of bytes
    constexpr int registerSize = 2;
    if (m_isSerial) {
        answer.chop(crcSize);
    }
    switch (chosen) {
    case Corrupted:
        if (m_isSerial) {
            answer += crcOf(answer);
            answer[answer.size() / 2] = static_cast<char>(answer.at(answer.size() / 2) ^ 0x10);
            return answer;
        }
        answer[2] = static_cast<char>(answer.at(2) ^ 0x10); // what it holds is the transport's to protect
        break;
    case WrongUnit:
        answer[unit] = static_cast<char>(answer.at(unit) + 1);
        break;
    case WrongTransaction:
        answer[1] = static_cast<char>(answer.at(1) ^ (m_isSerial ? 7 : 1));
        break;
    case TooLong:
        answer[countPlace] = static_cast<char>(answer.at(countPlace) + registerSize);
        answer.append(registerSize, '\x55');
        break;
    case TooShort:
        answer[countPlace] = static_cast<char>(answer.at(countPlace) - registerSize);
        answer.chop(registerSize);
        break;
    case CutOff:
        answer.chop(m_isSerial ? 1 : registerSize);
        return answer;
    case Noise:
        return QByteArray("\x07\x83\xff\x10\x01", 5) + answer + (m_isSerial ? crcOf(answer) : QByteArray());
    default:
        break;
    }
    if (m_isSerial) {
        return answer + crcOf(answer);
    }
    const int length = answer.size() - tcpHeaderSize;
    answer[tcpHeaderSize - 2] = static_cast<char>(length >> 8);
    answer[tcpHeaderSize - 1] = static_cast<char>(length & 0xFF);
    return answer;
}

void FaultyLine::sendToClient(const QByteArray &bytes)
{
    waitForLine(bytes.size());
    if (m_client >= 0 && !writeAll(m_client, !m_isSerial, bytes)) {
        dropClient();
    }
}

void FaultyLine::waitForLine(int byteCount)
{
    constexpr qint64 bitsPerByte = 10;
    if (baud > 0) {
        QThread::usleep(static_cast<unsigned long>(byteCount * bitsPerByte * 1000000 / baud));
    }
}

void FaultyLine::dropClient()
{
    if (m_isSerial) {
        return; // a serial line has no connections
    }
    for (int *const end : {&m_client, &m_server}) {
        if (*end >= 0) {
            close(*end);
        }
        *end = -1;
    }
}
