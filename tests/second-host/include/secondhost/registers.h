#pragma once

#include "base.h"

#include <QList>
#include <QObject>

class CommandHandlerInterface;
class KAROModuleInterface;

struct Parameter
{
    double factor = 1;
    qint32 bank = 0;
    qint32 number = 0;
    bool stored = false;
    qint32 defaultValue = 0;
    QString unit;
    qint64 minimum = 0;
    qint64 maximum = 0;
    quint8 flags[3] = {0, 0, 0};
    QString group;
    QString name;
    QString nameSuffix;
    QString description;
    QString access;
    QString notes;
};

class SECONDHOST_EXPORT Register : public QObject
{
    Q_OBJECT
public:
    Register(int offset, int width, QString title, QObject *parent = nullptr);
    int getOffset() const;
    int getWidth() const;
    QString getTitle() const;
    QString getDescription() const;

private:
    int m_offset;
    int m_width;
    QString m_title;
};

class SECONDHOST_EXPORT RegisterSet : public Register
{
    Q_OBJECT
public:
    using Register::Register;
    QList<Register *> getFractions();
};

class SECONDHOST_EXPORT TempTools
{
public:
    TempTools(int, int, CommandHandlerInterface *, QString, unsigned char readCommand, unsigned char writeCommand);
    bool fillCurrentRegisterList(KAROModuleInterface *module, QList<int> kinds);
    QList<Register *> currentRegisterList() const;

private:
    QList<Register *> m_registers;
};
