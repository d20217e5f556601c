#pragma once

#include "host/Register.h"

#include <QList>

/**
 * A register that is divided into bit fields.
 *
 * Owns its fractions.
 */
class HOST_EXPORT RegisterSet : public Register
{
    Q_OBJECT

public:
    RegisterSet(int address, int width, const QString &title, const QString &description, Kind kind = Readable,
                QObject *parent = nullptr);

    /// Adds a field of \a width bit at \a bitOffset (bit) behind those already there.
    Register *addFraction(int bitOffset, int width, const QString &title, const QString &description = QString());

    /// The fields in the order in which they were added; may be empty.
    QList<Register *> getFractions() const;

private:
    QList<Register *> m_fractions;
};
