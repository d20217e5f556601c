#include "host/CommandCombo.h"

#include <cstddef>
#include <type_traits>

// Callers pass the address of two neighbouring records as a CommandCombo.
static_assert(std::is_standard_layout<CommandCombo>::value, "the layout must be predictable");
static_assert(offsetof(CommandCombo, reply) == sizeof(Command), "the reply must follow the request at once");
static_assert(sizeof(CommandCombo) == 2 * sizeof(Command), "there must be nothing but request and reply");

void Command::setAddress(unsigned char address)
{
    m_address = address;
}

void Command::setCommand(unsigned char command)
{
    m_command = command;
}

void Command::setType(unsigned short type)
{
    m_type = static_cast<unsigned char>(type & 0xFFU);
}

void Command::setMotorBank(unsigned char motorBank)
{
    m_motorBank = motorBank;
}

void Command::setValue(qint32 value)
{
    m_value = value;
    m_status = Status::Answered;
}

void Command::setStatus(Status status)
{
    m_status = status;
}

unsigned char Command::address() const
{
    return m_address;
}

unsigned char Command::command() const
{
    return m_command;
}

unsigned char Command::type() const
{
    return m_type;
}

unsigned char Command::motorBank() const
{
    return m_motorBank;
}

qint32 Command::value() const
{
    return m_value;
}

Command::Status Command::status() const
{
    return m_status;
}
