// Descriptions of a module's parameters and registers.
#pragma once

#include <QObject>
#include <QVector>

#include "secondhost/constants.hpp"

class CommandHandlerInterface;
class KAROModuleInterface;

struct Parameter {
  double factor = 1;
  int unit = 0;
  int number = 0;
  bool is_stored = false;
  int at_start = 0;
  QString group;
  qint64 minimum = 0;
  qint64 maximum = 0;
  unsigned char width = 0;
  unsigned char bank = 0;
  unsigned char motor = 0;
  QString id;
  QString name;
  QString nameSuffix;
  QString unit_name;
  QString access;
  QString help;
};

class SECONDHOST_API Register : public QObject {
  Q_OBJECT

 public:
  Register(int offset, int width, QString title, QObject* parent);
  int getOffset() const;
  int getWidth() const;
  QString getTitle() const;
  QString getDescription() const;

 private:
  int offset_;
  int width_;
  QString title_;
};

class SECONDHOST_API RegisterSet : public Register {
  Q_OBJECT

 public:
  using Register::Register;
  QVector<Register*> getFractions();
};

class SECONDHOST_API TempTools {
 public:
  TempTools(int first, int last, CommandHandlerInterface* channel, QString name,
            unsigned char read, unsigned char write);
  bool fillCurrentRegisterList(KAROModuleInterface* module, QList<int> kinds);
  QVector<Register*>& found();

 private:
  QVector<Register*> found_;
};
