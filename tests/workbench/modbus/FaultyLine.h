#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <thread>

/**
 * Stands between a client and a server and lets faults happen to the answers, over TCP or over a pair of
 * pseudo-terminals. A thread of its own.
 */
class FaultyLine
{
public:
    enum Fault
    {
        None,
        Delayed,     ///< within the time that an answer may take
        Split,       ///< sent byte by byte
        Trickled,    ///< byte by byte, so slowly that the whole is late
        RequestLost, ///< it does not reach the server
        AnswerLost,
        Late,      ///< after the time that an answer may take, when the client may already have asked again
        Twice,     ///< both copies at once
        Merged,    ///< the answer before is sent again, in one piece with the right one
        Closed,    ///< in the middle of the answer
        Corrupted, ///< a bit of its header, or on a serial line of any byte
        WrongUnit,
        WrongTransaction, ///< on a serial line: another function
        TooLong,          ///< by a register, consistently
        TooShort,         ///< by a register, consistently
        CutOff,           ///< its last bytes never come
        Noise,            ///< garbage before it
        FaultCount
    };

    explicit FaultyLine(quint16 serverPort); ///< TCP
    FaultyLine();                            ///< serial; both ends are there at once
    ~FaultyLine();
    FaultyLine(const FaultyLine &) = delete;
    FaultyLine &operator=(const FaultyLine &) = delete;

    quint16 port() const;
    QString clientPort() const;
    QString serverPort() const;

    /// How late a late answer is, ms.
    std::atomic<int> lateMs{0};
    std::atomic<Fault> fault{None}; ///< that happens from now on, to every answer
    /// Of all answers, those that get a random fault in place of \a fault: one in so many; 0 for none.
    std::atomic<int> randomFaultInterval{0};
    std::atomic<int> baud{0}; ///< bytes of both directions take as long as at this rate with 10 bits each; 0: no time
    std::atomic<int> faultCount{0};
    std::atomic<bool> repeatsNow{false}; ///< the last answer is sent once more, unasked

private:
    void run();
    void acceptClient();
    void passRequest();
    void passAnswer();
    void apply(Fault fault, const QByteArray &answer);
    QByteArray changed(Fault fault, QByteArray answer) const;
    void sendToClient(const QByteArray &bytes);
    void waitForLine(int byteCount);
    void dropClient();

    const bool m_isSerial;
    int m_listener = -1;
    quint16 m_serverTcpPort = 0;
    int m_client = -1; // sockets, or the own ends of pseudo-terminals
    int m_server = -1;
    int m_clientSlave = -1; // kept open, so that no end sees a hang-up
    int m_serverSlave = -1;
    QByteArray m_answerBefore;
    unsigned m_random = 1;
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
};
