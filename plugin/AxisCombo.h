#pragma once

#include "host/CommandCombo.h"

#include <QtGlobal>

#include <cstddef>

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
    /**
     * A source of the whole 32 bit value.
     * \param moduleHandler the module's command channel, not owned; null: the source is off
     * \param address       bus address of the module
     */
    AxisCombo(CommandHandlerInterface *moduleHandler, unsigned char address);

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

    /// The request and reply of this source as the pair that a command channel takes.
    CommandCombo *exchange();

    CommandHandlerInterface *handler; ///< not owned; null means that the source is off
    quint8 shift;                     ///< bit position of the value in the reply, bit
    Command request;
    Command reply; ///< right behind request: see exchange()
    quint32 mask;  ///< applied after shifting
    quint32 signBit = 0;
};

// The channel is handed a source's own request and reply in place, so they have to lie as they do in a CommandCombo.
static_assert(sizeof(CommandCombo) == 2 * sizeof(Command), "a CommandCombo is a request and a reply, nothing else");
static_assert(offsetof(AxisCombo, reply) == offsetof(AxisCombo, request) + sizeof(Command),
              "the reply lies right behind the request");
