#include "secondhost/commands.h"
#include "secondhost/plugins.h"
#include "secondhost/registers.h"

Command::Command()
    : m_bytes()
    , m_type(0)
    , m_value(0) {}

Command::~Command() = default;

void Command::setAddress(unsigned char address) { m_bytes[0] = address; }

void Command::setCommand(unsigned char command) { m_bytes[1] = command; }

void Command::setType(unsigned short type) { m_type = type; }

void Command::setMotorBank(unsigned char motorBank) { m_bytes[2] = motorBank; }

void Command::setValue(int value) { m_value = value; }

unsigned char Command::address() const { return m_bytes[0]; }

unsigned char Command::command() const { return m_bytes[1]; }

unsigned short Command::type() const { return m_type; }

int Command::value() const { return m_value; }

CommandHandlerInterface::~CommandHandlerInterface() = default;

void CommandHandlerInterface::setCircularMode(bool on) { m_circularMode = on; }

bool CommandHandlerInterface::circularMode() const { return m_circularMode; }

Register::Register(int offset, int width, QString title, QObject *parent)
    : QObject(parent)
    , m_offset(offset)
    , m_width(width)
    , m_title(title) {}

int Register::getOffset() const { return m_offset; }

int Register::getWidth() const { return m_width; }

QString Register::getTitle() const { return m_title; }

QString Register::getDescription() const { return m_title; }

QList<Register *> RegisterSet::getFractions() { return findChildren<Register *>(); }

TempTools::TempTools(int, int, CommandHandlerInterface *, QString, unsigned char, unsigned char) {}

bool TempTools::fillCurrentRegisterList(KAROModuleInterface *module, QList<int>) {
    m_registers = module->registers;
    return !m_registers.isEmpty();
}

QList<Register *> TempTools::currentRegisterList() const { return m_registers; }
