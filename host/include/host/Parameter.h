#pragma once

#include <QString>

/**
 * A module's description of one parameter, kept in maps under keys that begin with "par::" for axis parameters.
 *
 * The order of the fields is the host's; only number, name, nameSuffix and access are read by container plugins.
 */
struct Parameter
{
    double scale = 1.0;      ///< factor from the raw value to the unit
    qint32 index = 0;        ///< position in the module's own list
    qint32 number = 0;       ///< parameter number, 0 to 255
    bool stored = false;     ///< kept by the module when it is switched off
    qint32 defaultValue = 0; ///< raw value after a factory reset
    QString key;             ///< the key under which the parameter is registered
    qint64 minimum = 0;      ///< minimum of the raw value
    qint64 maximum = 0;      ///< maximum of the raw value
    quint8 bits = 32;        ///< width of the raw value, bit
    quint8 bank = 0;         ///< bank or motor
    quint8 flags = 0;        ///< reserved
    QString group;           ///< heading under which tools list the parameter
    QString name;            ///< first part of the display name
    QString nameSuffix;      ///< second part of the display name
    QString unit;            ///< unit text, may be empty
    QString access;          ///< contains "r" when readable, "w" when writable
    QString description;     ///< one sentence for tool tips
};
