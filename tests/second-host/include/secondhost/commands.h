#pragma once

#include "base.h"

#include <QList>

class SECONDHOST_EXPORT Command
{
public:
    Command();
    ~Command();
    Command(const Command &) = default;
    Command &operator=(const Command &) = default;

    void setAddress(unsigned char address);
    void setCommand(unsigned char command);
    void setType(unsigned short type);
    void setMotorBank(unsigned char motorBank);
    void setValue(int value);
    unsigned char address() const;
    unsigned char command() const;
    unsigned short type() const;
    int value() const;

private:
    unsigned char m_bytes[3];
    unsigned short m_type;
    int m_value;
};

struct CommandCombo
{
    Command request;
    Command reply;
};

class SECONDHOST_EXPORT CommandHandlerInterface
{
public:
    virtual ~CommandHandlerInterface();
    virtual void sendCommandCombos(QList<CommandCombo *> combos) = 0;
    void setCircularMode(bool on);
    bool circularMode() const;

private:
    bool m_circularMode = true;
};
