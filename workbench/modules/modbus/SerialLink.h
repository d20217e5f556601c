#pragma once

#include "modules/modbus/ModbusLink.h"

/// A line over a serial port. See ModbusLink.
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
    ConnectionTrouble prepare() override;
    ConnectionTrouble confirm() override;
    ConnectionTrouble recover(const ConnectionTrouble &trouble) override;

private:
    /// Drops what comes until nothing has come for \a quietMs; gives up after a while and returns false.
    bool listenUntilQuiet(int quietMs);

    int silenceUs() const;
    int waitingBytes() const;

    int m_descriptor = -1;   // the library's
    qint64 m_lastByteNs = 0; // when the line was last known to be in use
};
