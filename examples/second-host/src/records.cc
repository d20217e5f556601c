#include "secondhost/command_channel.hpp"
#include "secondhost/plugin_bases.hpp"
#include "secondhost/register_list.hpp"

Command::Command() {}

Command::~Command() {}

void Command::setAddress(unsigned char address) { address_ = address; }

void Command::setCommand(unsigned char number) { command_ = number; }

void Command::setType(unsigned short type) { type_ = type; }

void Command::setMotorBank(unsigned char motor_or_bank) {
  motor_bank_ = motor_or_bank;
}

int Command::value() { return value_; }

CommandHandlerInterface::~CommandHandlerInterface() {}

bool CommandHandlerInterface::setCircularMode(bool on) {
  const bool was_circular = is_circular_;
  is_circular_ = on;
  return was_circular;
}

Register::Register(int offset, int width, QString title, QObject* parent)
    : QObject(parent), offset_(offset), width_(width), title_(title) {}

int Register::getOffset() const { return offset_; }

int Register::getWidth() const { return width_; }

QString Register::getTitle() const { return title_; }

QString Register::getDescription() const { return title_; }

QVector<Register*> RegisterSet::getFractions() {
  return findChildren<Register*>().toVector();
}

TempTools::TempTools(int, int, CommandHandlerInterface*, QString, unsigned char,
                     unsigned char) {}

bool TempTools::fillCurrentRegisterList(KAROModuleInterface* module,
                                        QList<int>) {
  found_ = module->registers_.toVector();
  return !found_.isEmpty();
}

QVector<Register*>& TempTools::found() { return found_; }
