#pragma once

/// What a field of a recording holds.
struct FieldNumber
{
    enum class Kind
    {
        Missing, ///< nothing, or "NaN"
        Number,
        Text
    };

    Kind kind = Kind::Missing;
    double value = 0.0;
    int decimals = 0;     ///< decimals that are needed to write the number exactly as it stands, 0 or more
    char decimalMark = 0; ///< the one that it has; 0 without
};

/**
 * Reads a number in decimal notation, with or without an exponent, and without digit grouping.
 *
 * \param mayHaveComma whether a comma is a decimal mark as a point is
 */
FieldNumber fieldNumber(const char *begin, const char *end, bool mayHaveComma);
