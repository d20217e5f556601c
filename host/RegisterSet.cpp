#include "host/RegisterSet.h"

RegisterSet::RegisterSet(int address, int width, const QString &title, const QString &description, Kind kind,
                         QObject *parent)
    : Register(address, width, title, description, kind, parent)
{
}

Register *RegisterSet::addFraction(int bitOffset, int width, const QString &title, const QString &description)
{
    auto *const fraction = new Register(bitOffset, width, title, description, kind(), this);
    m_fractions.append(fraction);
    return fraction;
}

QList<Register *> RegisterSet::getFractions() const
{
    return m_fractions;
}
