#include "modules/modbus/AnswerGate.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace
{

constexpr std::size_t requestSize = 12;
constexpr std::size_t headerSize = 6; // up to the length of what follows
constexpr unsigned minimumLength = 3; // unit, function and one byte
constexpr unsigned maximumLength = 254;
constexpr std::size_t unitPlace = 6;
constexpr std::size_t functionPlace = 7;
constexpr std::size_t countPlace = 10; // in a request
constexpr std::size_t bytesPlace = 8;  // in an answer
constexpr unsigned char lastBitFunction = 2;
constexpr unsigned char lastReadFunction = 4;
constexpr unsigned char exceptionBit = 0x80;
constexpr unsigned exceptionLength = 3;

unsigned wordAt(const std::vector<unsigned char> &bytes, std::size_t place)
{
    return bytes[place] * 256U + bytes[place + 1];
}

std::vector<unsigned char> withTransaction(std::vector<unsigned char> frame, unsigned transaction)
{
    frame[0] = static_cast<unsigned char>(transaction >> 8U);
    frame[1] = static_cast<unsigned char>(transaction & 0xFFU);
    return frame;
}

/// How many bytes of payload answer \a request.
unsigned payloadOf(const std::vector<unsigned char> &request)
{
    const unsigned count = wordAt(request, countPlace);
    return request[functionPlace] <= lastBitFunction ? (count + 7) / 8 : count * 2;
}

bool sendAll(int socket, const std::vector<unsigned char> &bytes)
{
    return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

} // namespace

AnswerGate::AnswerGate(int device, int library, unsigned *transaction, std::function<void()> onEnd)
    : m_device(device), m_library(library), m_transaction(transaction), m_onEnd(std::move(onEnd)), m_thread([this] {
        run();
    })
{
}

AnswerGate::~AnswerGate()
{
    m_thread.join();
    close(m_device);
    close(m_library);
}

ConnectionTrouble AnswerGate::fault() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_fault;
}

bool AnswerGate::hasEnded() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_hasEnded;
}

void AnswerGate::run()
{
    bool isPassing = true;
    while (isPassing) {
        pollfd sockets[] = {{m_library, POLLIN, 0}, {m_device, POLLIN, 0}};
        if (poll(sockets, 2, -1) < 0) {
            isPassing = errno == EINTR;
            continue;
        }
        // The request first: its answer may have come in between.
        isPassing = (sockets[0].revents == 0 || passRequest()) && (sockets[1].revents == 0 || passAnswers());
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_hasEnded = true;
    }
    // Both sides learn it at once; the descriptors stay taken until the destructor.
    shutdown(m_library, SHUT_RDWR);
    shutdown(m_device, SHUT_RDWR);
    m_onEnd();
}

bool AnswerGate::passRequest()
{
    Bytes bytes(requestSize);
    const ssize_t size = recv(m_library, bytes.data(), bytes.size(), 0);
    if (size <= 0) {
        return false; // closed by this side, which is no fault
    }
    if (m_request.size() >= requestSize) {
        m_request.clear();
    }
    m_request.insert(m_request.end(), bytes.begin(), bytes.begin() + size);
    if (m_request.size() < requestSize) {
        return true;
    }
    const unsigned char function = m_request[functionPlace];
    if (m_request.size() != requestSize || function < 1 || function > lastReadFunction) {
        return fail(ConnectionTrouble::Kind::NotModbus);
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_fault = {};
    }
    m_isWaiting = true;
    *m_transaction = (*m_transaction + 1) & 0xFFFFU;
    return sendAll(m_device, withTransaction(m_request, *m_transaction)) || fail(ConnectionTrouble::Kind::Closed);
}

bool AnswerGate::passAnswers()
{
    Bytes bytes(maximumLength + headerSize);
    const ssize_t size = recv(m_device, bytes.data(), bytes.size(), 0);
    if (size <= 0) {
        return fail(ConnectionTrouble::Kind::Closed);
    }
    m_received.insert(m_received.end(), bytes.begin(), bytes.begin() + size);
    while (m_received.size() >= headerSize) {
        const unsigned length = wordAt(m_received, 4);
        if (wordAt(m_received, 2) != 0) {
            return fail(ConnectionTrouble::Kind::NotModbus);
        }
        if (length < minimumLength || length > maximumLength) {
            return fail(ConnectionTrouble::Kind::WrongLength);
        }
        const auto frameSize = static_cast<std::ptrdiff_t>(headerSize + length);
        if (static_cast<std::ptrdiff_t>(m_received.size()) < frameSize) {
            break;
        }
        if (!passAnswer(Bytes(m_received.begin(), m_received.begin() + frameSize))) {
            return false;
        }
        m_received.erase(m_received.begin(), m_received.begin() + frameSize);
    }
    return true;
}

bool AnswerGate::passAnswer(Bytes frame)
{
    if (!m_isWaiting || wordAt(frame, 0) != *m_transaction) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_fault = {ConnectionTrouble::Kind::WrongTransaction, 0, {}};
        return true;
    }
    if (frame[unitPlace] != m_request[unitPlace]) {
        return fail(ConnectionTrouble::Kind::WrongUnit, frame[unitPlace]);
    }
    const unsigned length = wordAt(frame, 4);
    const unsigned char function = m_request[functionPlace];
    if (frame[functionPlace] == (function | exceptionBit)) {
        if (length != exceptionLength) {
            return fail(ConnectionTrouble::Kind::WrongLength);
        }
    } else if (frame[functionPlace] != function) {
        return fail(ConnectionTrouble::Kind::NotModbus);
    } else if (frame[bytesPlace] != payloadOf(m_request) || length != exceptionLength + payloadOf(m_request)) {
        return fail(ConnectionTrouble::Kind::WrongLength);
    }
    m_isWaiting = false;
    return sendAll(m_library, withTransaction(std::move(frame), wordAt(m_request, 0)));
}

bool AnswerGate::fail(ConnectionTrouble::Kind kind, int number)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_fault = {kind, number, {}};
    return false;
}
