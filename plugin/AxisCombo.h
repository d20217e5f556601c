#pragma once

#include "host/CommandCombo.h"

#include <QObject>
#include <QPointer>

class CommandHandlerInterface;

/**
 * One value source: the request that reads a value from a module, the reply to it, and how the reply's 32 bit become a
 * number.
 *
 * Made once per curve and axis and meant to live as long as the process. GUI thread.
 */
class AxisCombo
{
public:
    /// The bus address in the request of a source that is off.
    static constexpr unsigned char unboundAddress = 1;

    /**
     * A source of the whole 32 bit value.
     * \param moduleHandler the module's command channel, not owned; null: the source is off
     * \param address       bus address of the module
     */
    AxisCombo(CommandHandlerInterface *moduleHandler, unsigned char address);

    /**
     * Reads from \a module from now on, through its channel \a moduleHandler; which value, says setRequest().
     * Neither is owned. The source is off once the module has been destroyed.
     */
    void bind(QObject *module, CommandHandlerInterface *moduleHandler, unsigned char address);

    /// Reads from no module any more, until bind() is called again.
    void switchOff();

    /// Whether there is a channel to read from.
    bool isOn() const;

    /**
     * Takes over a copy of \a command, and the bit field in which its reply carries the value.
     *
     * \param command  may be this source's own request
     * \param offset   bit offset of the field, taken modulo 32
     * \param width    width of the field, bit; 32 and more mean the whole value, 0 an empty field
     * \param isSigned whether the field's top bit is its sign
     */
    void setRequest(Command *command, unsigned char offset, unsigned char width, bool isSigned);

    /// The reply's value: the bit field, sign-extended when it was set up as signed.
    qint32 value() const;

    CommandHandlerInterface *handler; ///< not owned; null means that the source is off
    quint8 shift;                     ///< bit position of the value in the reply, bit
    CommandCombo pair;                ///< request and reply as a channel takes them
    Command &request;                 ///< of the pair
    Command &reply;                   ///< of the pair
    quint32 mask;                     ///< applied after shifting
    quint32 signBit = 0;

private:
    Q_DISABLE_COPY(AxisCombo)

    bool m_isBound = false;
    QPointer<QObject> m_module; // to which the source is bound
};
