#pragma once

#include "modules/modbus/ModbusLink.h"

/**
 * A line over a serial port. See ModbusLink.
 *
 * Answers have no transaction number on this line: one that is late looks like the answer to the next request of the
 * same length. But a device answers in the order of the requests. So after a fault its line counts as out of step until
 * it has answered a request whose answer is of a length that none of the lost ones can have; then these can no longer
 * come.
 */
class SerialLink : public ModbusLink
{
public:
    explicit SerialLink(const ConnectionSettings &settings);
    ~SerialLink() override;

    ConnectionTrouble open() override;
    void close() override;
    ConnectionTrouble check() override;
    int answerTimeoutMs(const RegisterSpan &span) const override;

protected:
    ConnectionTrouble prepare(int unit, const RegisterSpan &span) override;
    ConnectionTrouble confirm() override;
    ConnectionTrouble recover(const ConnectionTrouble &trouble, int unit, const RegisterSpan &span) override;

private:
    /// Drops what comes until nothing has come for \a quietMs; gives up after a while and returns false.
    bool listenUntilQuiet(int quietMs);

    /// Asks a device of which answers are missing until one is certain to be the one to the last request.
    ConnectionTrouble getInStep(int unit, const RegisterSpan &span);

    int silenceUs() const;
    int waitingBytes() const;

    /// An answer that did not come in time, or was doubtful.
    struct Lost
    {
        int unit;
        int payload; // bytes
        qint64 timeNs;
    };

    QVector<Lost> m_lost;
    int m_descriptor = -1;   // the library's
    qint64 m_lastByteNs = 0; // when the line was last known to be in use
};
