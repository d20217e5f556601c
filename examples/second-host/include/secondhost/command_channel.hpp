// Requests to a module and their replies.
#pragma once

#include <QList>

#include "secondhost/constants.hpp"

class SECONDHOST_API Command {
 public:
  Command();
  virtual ~Command();

  void setAddress(unsigned char address);
  void setCommand(unsigned char number);
  void setType(unsigned short type);
  void setMotorBank(unsigned char motor_or_bank);
  int value();

  // For channels: what was asked, and the answer to it.
  int address_ = 0;
  int command_ = 0;
  int type_ = 0;
  int motor_bank_ = 0;
  int value_ = 0;
};

class SECONDHOST_API CommandCombo {
 public:
  Command request;
  Command reply;
};

class SECONDHOST_API CommandHandlerInterface {
 public:
  virtual ~CommandHandlerInterface();
  virtual void sendCommandCombos(QList<CommandCombo*> combos) = 0;
  bool setCircularMode(bool on);

  bool is_circular_ = true;
};
