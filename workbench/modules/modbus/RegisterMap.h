#pragma once

#include "modules/modbus/NumberFormat.h"
#include "modules/modbus/RegisterSpan.h"

#include <QString>
#include <QVector>

/**
 * What a device has to offer, as its register map describes it. Plain data, see readRegisterMap();
 * docs/register-maps.md describes the format.
 */
struct RegisterMap
{
    static constexpr int maximumAxes = 64;

    /// Where containers list a value.
    enum class Group
    {
        Axis,
        Variable,
        DigitalInput,
        AnalogInput,
        DigitalOutput,
        Register
    };

    /// Some bits of a value.
    struct Field
    {
        QString name;
        QString description;
        QString unit;
        int lowestBit = 0; ///< 0 to 31
        int width = 1;     ///< bit
        bool isSigned = false;
    };

    struct Value
    {
        QString name;
        QString description; ///< one sentence for tool tips
        QString unit;        ///< of the quantity, not of the step: "A"
        RegisterSpan span{};
        NumberFormat format;
        Group group = Group::Variable;
        int axis = 0;            ///< for Group::Axis: 0 to below maximumAxes
        bool isReadAhead = true; ///< before anybody asks for it
        QVector<Field> fields;   ///< only of integers without scale and offset
    };

    QString title;
    QVector<Value> values;

    int axisCount() const;
};
