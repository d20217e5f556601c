#pragma once

#include "modules/modbus/ModbusLink.h"

class AnswerGate;

/// A line over TCP. See ModbusLink.
class TcpLink : public ModbusLink
{
public:
    /// \param onEnd called by another thread when the other side has closed the connection
    TcpLink(const ConnectionSettings &settings, const WakeSignal &stop, std::function<void()> onEnd);
    ~TcpLink() override;

    ConnectionTrouble open() override;
    void close() override;
    ConnectionTrouble check() override;
    int answerTimeoutMs(const RegisterSpan &span) const override;

protected:
    ConnectionTrouble prepare(int unit, const RegisterSpan &span) override;
    ConnectionTrouble confirm() override;
    ConnectionTrouble recover(const ConnectionTrouble &trouble, int unit, const RegisterSpan &span) override;

private:
    const WakeSignal &m_stop;
    const std::function<void()> m_onEnd;
    unsigned m_transaction; // of the last request, over all connections
    std::unique_ptr<AnswerGate> m_gate;
};
