#pragma once

#include "host/CommandCombo.h"

#include <QObject>
#include <QPointer>

class CommandHandlerInterface;

/**
 * One value source: the request that reads a value from a module, its reply, and the bit field of the reply that holds
 * the value.
 *
 * There is one per curve and axis; it is never deleted. GUI thread.
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
     * Reads from \a module from now on, through its channel \a moduleHandler; setRequest() chooses the value.
     * Neither is owned. The source is off once the module has been destroyed.
     */
    void bind(QObject *module, CommandHandlerInterface *moduleHandler, unsigned char address);

    /// Unbinds the source from its module, until bind() is called again.
    void switchOff();

    /// Whether the source has a channel and its module still exists.
    bool isOn() const;

    /**
     * Copies \a command as the request, and sets the bit field of the reply that holds the value.
     *
     * \param command  may be this source's own request
     * \param offset   bit offset of the field, taken modulo 32
     * \param width    width of the field, bit; 32 and more: the whole value; 0: the value is always 0
     * \param isSigned whether the field's top bit is its sign
     */
    void setRequest(Command *command, unsigned char offset, unsigned char width, bool isSigned);

    /// The bit field of the reply, sign-extended if setRequest() made it signed.
    qint32 value() const;

    CommandHandlerInterface *handler; ///< not owned; null means that the source is off
    quint8 shift;                     ///< bit offset of the field in the reply, bit
    CommandCombo pair;                ///< request and reply as the channel expects them
    Command &request;                 ///< of the pair
    Command &reply;                   ///< of the pair
    quint32 mask;                     ///< applied after shifting
    quint32 signBit = 0;

private:
    Q_DISABLE_COPY(AxisCombo)

    bool m_isBound = false;
    QPointer<QObject> m_module; // null before bind(), and when it has been destroyed
};
