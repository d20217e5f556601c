#include "modules/modbus/NumberFormat.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace
{

constexpr int wordBits = 16;
constexpr int maximumBits = 32;

quint32 swapped(quint16 word)
{
    return ((word & 0xFFU) << 8U) | (word >> 8U);
}

qint32 saturated(double value)
{
    using Limits = std::numeric_limits<qint32>;
    if (!(value > double(Limits::min()))) { // NaN, too
        return Limits::min();
    }
    return value >= double(Limits::max()) ? Limits::max() : qint32(std::lround(value));
}

double number(NumberFormat::Type type, quint32 bits)
{
    switch (type) {
    case NumberFormat::Type::Int16:
        return double(bitField(bits, 0, wordBits, true));
    case NumberFormat::Type::Int32:
        return double(bitField(bits, 0, maximumBits, true));
    case NumberFormat::Type::Float32: {
        float value = 0.0F;
        static_assert(sizeof(value) == sizeof(bits) && std::numeric_limits<float>::is_iec559, "not single precision");
        std::memcpy(&value, &bits, sizeof(value));
        return double(value);
    }
    case NumberFormat::Type::Bit:
    case NumberFormat::Type::UInt16:
    case NumberFormat::Type::UInt32:
        break;
    }
    return double(bits);
}

/// Whether a prefix may be put before \a unit: an SI unit, be it divided by something, that is not to a power.
bool takesPrefix(const QString &unit)
{
    static const QStringList units = {"A", "V", "W", "m", "s", "Hz", "N", "Nm", "J", "Pa", "rad"};
    return units.contains(unit.section(QLatin1Char('/'), 0, 0));
}

} // namespace

int NumberFormat::words() const
{
    return bits() > wordBits ? 2 : 1;
}

int NumberFormat::bits() const
{
    switch (type) {
    case Type::Bit:
        return 1;
    case Type::Int16:
    case Type::UInt16:
        return wordBits;
    case Type::Int32:
    case Type::UInt32:
    case Type::Float32:
        break;
    }
    return maximumBits;
}

bool NumberFormat::isInteger() const
{
    return type != Type::Float32;
}

bool NumberFormat::isPlain() const
{
    const auto isEqual = [](double a, double b) { return !(a < b) && !(b < a); };
    return isInteger() && isEqual(scale, resolution) && isEqual(offset, 0.0);
}

quint32 NumberFormat::rawBits(const quint16 *words) const
{
    const auto word = [this, words](int index) {
        return isLowByteFirst && type != Type::Bit ? swapped(words[index]) : quint32(words[index]);
    };
    if (this->words() == 1) {
        return word(0);
    }
    const int lowWord = isLowWordFirst ? 0 : 1;
    return word(lowWord) | (word(1 - lowWord) << unsigned(wordBits));
}

qint32 NumberFormat::value(const quint16 *words) const
{
    return saturated((number(type, rawBits(words)) * scale + offset) / resolution);
}

qint32 bitField(quint32 bits, int lowestBit, int width, bool isSigned)
{
    // The field is moved to the top, from where the sign is spread on the way back.
    const int spare = maximumBits - width;
    const quint32 top = (bits >> unsigned(lowestBit)) << unsigned(spare);
    return isSigned ? qint32(top) >> spare : qint32(top >> unsigned(spare));
}

QString stepText(const QString &unit, double resolution)
{
    struct Prefix
    {
        double factor;
        const char *text;
    };
    static constexpr std::array<Prefix, 6> prefixes{
        {{1e6, "M"}, {1e3, "k"}, {1.0, ""}, {1e-3, "m"}, {1e-6, "\u00B5"}, {1e-9, "n"}}};
    constexpr double almostOne = 1.0 - 1e-9; // 0.001 / 1e-3 may come out below 1
    Prefix prefix{1.0, ""};
    if (takesPrefix(unit)) {
        const auto *const found = std::find_if(prefixes.cbegin(), prefixes.cend(), [resolution](const Prefix &each) {
            return resolution / each.factor >= almostOne;
        });
        prefix = found == prefixes.cend() ? prefixes.back() : *found;
    }
    constexpr int digits = 6;
    const QString steps = QLocale::c().toString(resolution / prefix.factor, 'g', digits);
    const QString shownUnit = QString::fromUtf8(prefix.text) + unit;
    if (steps == QLatin1String("1")) {
        return unit.isEmpty() ? QString() : shownUnit;
    }
    return unit.isEmpty() ? steps : steps + QLatin1Char(' ') + shownUnit;
}
