#pragma once

#include <QString>
#include <QtGlobal>

/**
 * How the words of a number in a device become a signed value of 32 bit.
 *
 * The number in the device times \c scale plus \c offset is a quantity in its unit; the value is this quantity in
 * steps of \c resolution, rounded to the nearest step. What does not fit becomes the minimum or maximum of 32 bit, and
 * NaN the minimum.
 */
struct NumberFormat
{
    enum class Type
    {
        Bit, ///< a coil or a discrete input
        Int16,
        UInt16,
        Int32,
        UInt32,
        Float32 ///< IEC 60559, single precision
    };

    Type type = Type::UInt16;
    bool isLowByteFirst = false; ///< the bytes of each register are swapped
    bool isLowWordFirst = false; ///< of two registers, the first has the low word
    double scale = 1.0;          ///< units per count of the number; finite, not 0
    double offset = 0.0;         ///< units; finite
    double resolution = 1.0;     ///< units per step of the value; finite, above 0

    int words() const; ///< 1 or 2
    int bits() const;  ///< 1, 16 or 32
    bool isInteger() const;

    /// Whether the value is the number in the device, not scaled or moved.
    bool isPlain() const;

    /// The bits of an integer in the device, its low word in the low 16; for a float those of its representation.
    quint32 rawBits(const quint16 *words) const;
    /// The value from words() words.
    qint32 value(const quint16 *words) const;
};

/// The \a width bits of \a bits from bit \a lowestBit on, with the highest of them as the sign when \a isSigned.
qint32 bitField(quint32 bits, int lowestBit, int width, bool isSigned);

/**
 * What is shown behind a name for values in steps of \a resolution \a unit: "A", "10 mA", "0.1 degC", "0.5".
 *
 * Units with SI prefixes of their own, and those that take none, keep the number. Empty for steps of 1 without a unit.
 */
QString stepText(const QString &unit, double resolution);
