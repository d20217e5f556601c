#pragma once

#include "modules/modbus/ConnectionSettings.h"
#include "modules/modbus/ConnectionTrouble.h"
#include "modules/modbus/RegisterSpan.h"

#include <QVector>

#include <modbus.h>

#include <functional>
#include <memory>

/// A descriptor that interrupts waits of another thread. Safe from every thread.
class WakeSignal
{
public:
    WakeSignal();
    ~WakeSignal();
    WakeSignal(const WakeSignal &) = delete;
    WakeSignal &operator=(const WakeSignal &) = delete;

    void give(); ///< for good
    int descriptor() const;

private:
    const int m_descriptor;
};

/**
 * One open line to Modbus devices, by the protocol library: it can read and nothing else.
 *
 * It connects only in open(), within a time limit, and the library's own recovery, which may block for ever, is off.
 * After any fault the line is brought to a state in which no answer to an older request can be taken for the next one's:
 * a TCP connection is closed, on a serial line the next request has an answer of another length. Used by one thread,
 * which it may block; not the GUI thread.
 */
class ModbusLink
{
public:
    static constexpr int connectTimeoutMs = 1000;

    /// \param stop ends open() early; has to outlive the link
    static std::unique_ptr<ModbusLink> of(const ConnectionSettings &settings, const WakeSignal &stop,
                                          std::function<void()> onEnd);
    virtual ~ModbusLink();
    ModbusLink(const ModbusLink &) = delete;
    ModbusLink &operator=(const ModbusLink &) = delete;

    /// Connects; may be called again after the link was closed.
    virtual ConnectionTrouble open() = 0;
    virtual void close();
    bool isOpen() const;

    /// Closes the link when it was ended from the other side while nothing was asked; returns the trouble.
    virtual ConnectionTrouble check() = 0;

    /**
     * Reads \a span of the device \a unit into \a words, which stay as they are after a trouble.
     *
     * After an exception the link is as good as before. After any other trouble isOpen() may be false.
     */
    ConnectionTrouble read(int unit, const RegisterSpan &span, QVector<quint16> *words);

    /// How long read() waits for the whole answer to a request for \a span, ms.
    virtual int answerTimeoutMs(const RegisterSpan &span) const = 0;

protected:
    explicit ModbusLink(const ConnectionSettings &settings);

    /// Brings the line into order before a request for \a span; a trouble leaves the request unsent.
    virtual ConnectionTrouble prepare(int unit, const RegisterSpan &span) = 0;

    /// After an answer without a fault: whether the line bears out that it was the whole one.
    virtual ConnectionTrouble confirm() = 0;

    /// After a fault of a request; returns the trouble as it is to be shown.
    virtual ConnectionTrouble recover(const ConnectionTrouble &trouble, int unit, const RegisterSpan &span) = 0;

    /// One request and the answer to it, as the library takes it.
    ConnectionTrouble exchange(int unit, const RegisterSpan &span, QVector<quint16> *words);

    const ConnectionSettings m_settings;
    modbus_t *m_context = nullptr; // owned; null while the link is closed
};
