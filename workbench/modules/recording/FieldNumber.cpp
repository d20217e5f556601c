#include "modules/recording/FieldNumber.h"

#include <QByteArray>

#include <array>
#include <cmath>

namespace
{

constexpr int exactDigits = 15; // a whole number of so many digits has no rounding error

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

double powerOfTen(int power) // 0 to exactDigits
{
    static constexpr std::array<double, exactDigits + 1> powers{1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return powers[static_cast<std::size_t>(power)];
}

/// What a number is written with, in order of appearance.
struct Parts
{
    bool isNegative = false;
    int digits = 0;
    int decimals = 0;      // all that are written
    int trailingZeros = 0; // of the decimals
    qint64 mantissa = 0;   // of up to exactDigits digits
    char decimalMark = 0;
    const char *rest = nullptr; // behind the last digit
};

Parts partsOf(const char *begin, const char *end, bool mayHaveComma)
{
    Parts parts;
    const char *at = begin;
    if (at < end && (*at == '-' || *at == '+')) {
        parts.isNegative = *at++ == '-';
    }
    for (; at < end; ++at) {
        if (isDigit(*at)) {
            ++parts.digits;
            parts.mantissa = parts.digits <= exactDigits ? parts.mantissa * 10 + (*at - '0') : parts.mantissa;
            if (parts.decimalMark != 0) {
                ++parts.decimals;
                parts.trailingZeros = *at == '0' ? parts.trailingZeros + 1 : 0;
            }
        } else if (parts.decimalMark == 0 && (*at == '.' || (mayHaveComma && *at == ','))) {
            parts.decimalMark = *at;
        } else {
            break;
        }
    }
    parts.rest = at;
    return parts;
}

/// Reads what is behind the digits: nothing, or an exponent, which is written to \a exponent.
bool isExponent(const char *at, const char *end, int *exponent)
{
    constexpr int maximumExponent = 400; // beyond those of double
    *exponent = 0;
    if (at == end) {
        return true;
    }
    if (*at != 'e' && *at != 'E') {
        return false;
    }
    ++at;
    const bool isNegative = at < end && *at == '-';
    if (at < end && (*at == '-' || *at == '+')) {
        ++at;
    }
    if (at == end) {
        return false;
    }
    for (; at < end; ++at) {
        if (!isDigit(*at)) {
            return false;
        }
        *exponent = qMin(maximumExponent, *exponent * 10 + (*at - '0'));
    }
    *exponent = isNegative ? -*exponent : *exponent;
    return true;
}

} // namespace

FieldNumber fieldNumber(const char *begin, const char *end, bool mayHaveComma)
{
    FieldNumber number;
    if (begin == end) {
        return number;
    }
    const Parts parts = partsOf(begin, end, mayHaveComma);
    int exponent = 0;
    if (parts.digits == 0 || !isExponent(parts.rest, end, &exponent)) {
        const bool isNaN = end - begin == 3 && qstrnicmp(begin, "nan", 3) == 0;
        number.kind = isNaN ? FieldNumber::Kind::Missing : FieldNumber::Kind::Text;
        return number;
    }
    number.kind = FieldNumber::Kind::Number;
    number.decimalMark = parts.decimalMark;
    if (parts.digits <= exactDigits && exponent == 0) {
        const double value = double(parts.mantissa) / powerOfTen(parts.decimals);
        number.value = parts.isNegative ? -value : value;
    } else {
        QByteArray text(begin, static_cast<int>(end - begin));
        number.value = text.replace(',', '.').toDouble();
        if (std::isinf(number.value)) {
            return {FieldNumber::Kind::Text, 0.0, 0, 0}; // larger than any number that can be calculated with
        }
    }
    const bool isZero = !(std::abs(number.value) > 0.0);
    number.decimals = isZero ? 0 : qMax(0, parts.decimals - parts.trailingZeros - exponent);
    return number;
}
