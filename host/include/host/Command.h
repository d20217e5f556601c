#pragma once

#include "host/HostExport.h"

#include <QtGlobal>

/**
 * One request or one reply of the KARO command set: a plain value.
 *
 * A request carries module address, command number, type and motor or bank; a reply carries the value, 0 before the
 * first answer. Plugins build requests and read values; setValue(), setStatus() and status() serve channels and the
 * host application.
 */
class HOST_EXPORT Command
{
public:
    /// How the last exchange that used this record as its reply ended.
    enum class Status : quint8
    {
        Unanswered, ///< never sent, or no answer before the channel's deadline
        Answered,   ///< the value is the module's
        Refused     ///< the module answered that it knows no such value; the value is kept
    };

    Command() = default;
    ~Command() = default;
    Command(const Command &) = default;
    Command &operator=(const Command &) = default;

    void setAddress(unsigned char address);     ///< Module address, 0 to 255.
    void setCommand(unsigned char command);     ///< Command number, 0 to 255.
    void setType(unsigned short type);          ///< Parameter number or register address; the low 8 bits are kept.
    void setMotorBank(unsigned char motorBank); ///< Motor or bank number, 0 to 255.
    void setValue(qint32 value);                ///< The module's answer; marks the record as answered.
    void setStatus(Status status);              ///< Leaves the value as it is.

    unsigned char address() const;
    unsigned char command() const;
    unsigned char type() const;
    unsigned char motorBank() const;
    qint32 value() const; ///< The last answer; 0 before the first one.
    Status status() const;

private:
    unsigned char m_address = 0;
    unsigned char m_command = 0;
    unsigned char m_type = 0;
    unsigned char m_motorBank = 0;
    Status m_status = Status::Unanswered;
    qint32 m_value = 0;
};
