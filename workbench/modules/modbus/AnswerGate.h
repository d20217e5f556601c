#pragma once

#include "modules/modbus/ConnectionTrouble.h"

#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/**
 * Stands between the protocol library and a TCP socket and lets only the answer pass that belongs to the last request.
 *
 * The library compares the transaction number, and neither the unit that answers nor the length in an answer's header;
 * and it begins to count anew with every connection, while a gateway may still deliver what an earlier one has asked for.
 * So requests get transaction numbers that go on over all connections. An answer with another number is dropped: it was
 * late, or came twice. After any other fault nothing passes any more. Requests pass if they read; no other request is
 * ever sent to a device.
 *
 * It has a thread of its own. Made and destroyed by the connection's thread.
 */
class AnswerGate
{
public:
    /**
     * Takes both sockets over.
     *
     * \param library the end of a socket pair whose other end the library has
     * \param transaction the last number that was used, 16 bits; goes on with each request, and has to outlive the gate
     * \param onEnd called by the gate's thread when nothing passes any more
     */
    AnswerGate(int device, int library, unsigned *transaction, std::function<void()> onEnd);

    /// The library's end has to be closed before: that ends the thread.
    ~AnswerGate();

    AnswerGate(const AnswerGate &) = delete;
    AnswerGate &operator=(const AnswerGate &) = delete;

    /// Why nothing passes any more, or why answers were dropped since the last request.
    ConnectionTrouble fault() const;

    bool hasEnded() const;

private:
    using Bytes = std::vector<unsigned char>;

    void run();
    bool passRequest();
    bool passAnswers();
    bool passAnswer(Bytes frame);
    bool fail(ConnectionTrouble::Kind kind, int number = 0);

    const int m_device;
    const int m_library;
    unsigned *const m_transaction; // not owned; of the last request
    const std::function<void()> m_onEnd;
    Bytes m_request;          // the last one, complete or not
    bool m_isWaiting = false; // for the answer to it
    Bytes m_received;         // the beginning of an answer
    mutable std::mutex m_mutex;
    ConnectionTrouble m_fault; // guarded, as the next is
    bool m_hasEnded = false;
    std::thread m_thread; // last: begins when all else is there
};
