#pragma once

#include "modules/modbus/ModbusValue.h"
#include "modules/modbus/RegisterMap.h"

#include <QString>
#include <QVector>

/// One line of a module's tables, and the request by which it is read.
struct RegisterMapRow
{
    static constexpr int maximumNumber = 255; ///< what a request has room for

    /// A fraction of a register, as containers cut it out of the answer.
    struct Fraction
    {
        int bitOffset; ///< bit
        int width;     ///< bit
        QString name;
        QString description;
    };

    int valueIndex = 0; ///< in RegisterMap::values
    RegisterMap::Group group = RegisterMap::Group::Variable;
    QString mapName; ///< "axis0", "global2" ...; empty for a register
    QString name;
    QString unitText; ///< behind the name, without brackets; may be empty
    QString description;
    int command = 0;
    int motorBank = 0;
    int number = 0;     ///< parameter number or register address; above maximumNumber when there are too many
    int widthBits = 32; ///< of a register
    QVector<Fraction> fractions;
    ModbusValue value;

    /// Name and unit as containers show them.
    QString shownName() const;
};

/**
 * All rows of \a map: one per value and one per bit field, in the order of the map, numbered from 0 in each table.
 *
 * A register gets the low byte of its address for a number where that is free. Its fields are fractions where all
 * containers offer these: up to four, each of four or more bits, without sign. Else each is a row of its own.
 */
QVector<RegisterMapRow> registerMapRows(const RegisterMap &map);

/// The values of \a rows by request; requests to another address than \a moduleAddress find none.
ModbusLookup lookupIn(const QVector<RegisterMapRow> &rows, unsigned char moduleAddress);
