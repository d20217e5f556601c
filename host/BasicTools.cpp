#include "host/BasicTools.h"

#include <QtMath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr unsigned int fewestIntervals = 5;
constexpr unsigned int mostIntervals = 10;
/// The span between two bounds of this size is a finite number, and every step it can get divides them: rounding
/// outwards stays within them.
constexpr double largestBound = 4e307;
/// Bounds closer together than this, relative to their size, leave no digits to tell ticks apart.
constexpr double leastRelativeSpan = 1e-12;
constexpr double leastSpan = 1e-300;
/// What rounding noise in the span may add to the wanted step without pushing it to the next one; as much as that in a
/// span of the least size.
constexpr double stepTolerance = 1e-3;
constexpr int digitsPerGroup = 3;

/// mantissa * 10^exponent, the mantissa being 1, 2 or 5.
struct TickStep
{
    int mantissa = 1;
    int exponent = 0;

    TickStep next() const
    {
        switch (mantissa) {
        case 1:
            return {2, exponent};
        case 2:
            return {5, exponent};
        default:
            return {1, exponent + 1};
        }
    }

    /// \a count steps, rounded once: dividing by a power of ten is exact where multiplying by 0.2 is not.
    double times(double count) const
    {
        const double units = count * mantissa;
        const double bound =
            exponent < 0 ? units / std::pow(10.0, -exponent) : units * std::pow(10.0, static_cast<double>(exponent));
        return bound + 0.0; // no negative zero
    }

    /// The number of whole steps at or below \a bound. The quotient is a first guess only, for it is rounded.
    double countBelow(double bound) const
    {
        double count = std::floor(bound / times(1.0));
        while (times(count) > bound) {
            count -= 1.0;
        }
        while (times(count + 1.0) <= bound) {
            count += 1.0;
        }
        return count;
    }

    double countAbove(double bound) const
    {
        return -countBelow(-bound);
    }
};

TickStep smallestStep(double interval)
{
    TickStep step{1, static_cast<int>(std::floor(std::log10(interval)))};
    while (step.times(1.0) < interval * (1.0 - stepTolerance)) {
        step = step.next();
    }
    return step;
}

double finiteBound(double bound, double substitute)
{
    if (std::isnan(bound)) {
        bound = std::isnan(substitute) ? 0.0 : substitute;
    }
    return qBound(-largestBound, bound, largestBound);
}

/// Puts bounds within the largest in order and so far apart that ticks between them differ.
void makeOrderedRange(double &min, double &max)
{
    if (min > max) {
        std::swap(min, max);
    }
    const double needed = qMax(leastSpan, leastRelativeSpan * qMax(std::fabs(min), std::fabs(max)));
    if (max - min >= needed) {
        return;
    }
    const double margin = max > min ? needed : qMax(1.0, needed);
    min = qMax(-largestBound, min - margin);
    max = qMin(largestBound, max + margin);
}

} // namespace

void BasicTools::adjustLinearAxis(double &min, double &max, unsigned int &ticks)
{
    double lower = finiteBound(min, max);
    double upper = finiteBound(max, min);
    makeOrderedRange(lower, upper);

    const unsigned int wanted = qBound(fewestIntervals, ticks, mostIntervals);
    TickStep step = smallestStep((upper - lower) / wanted);
    double first = step.countBelow(lower);
    double last = step.countAbove(upper);
    // Rounding outwards may add an interval; beyond the most, the next call would choose a wider step than this one.
    while (last - first > mostIntervals) {
        step = step.next();
        first = step.countBelow(lower);
        last = step.countAbove(upper);
    }
    min = step.times(first);
    max = step.times(last);
    ticks = static_cast<unsigned int>(last - first);
}

QString BasicTools::intInsertDot(double value, int decimals)
{
    if (!std::isfinite(value)) {
        return QString::number(value);
    }
    QString text = QString::number(std::fabs(value), 'f', qBound(0, decimals, 15));
    int pointPosition = text.indexOf(QLatin1Char('.'));
    if (pointPosition < 0) {
        pointPosition = text.size();
    } else {
        text[pointPosition] = QLatin1Char(',');
    }
    for (int position = pointPosition - digitsPerGroup; position > 0; position -= digitsPerGroup) {
        text.insert(position, QLatin1Char('.'));
    }
    // What is rounded to zero is zero: a lone "-0" beside an axis looks like a fault.
    const bool isZero = std::all_of(text.cbegin(), text.cend(),
                                    [](QChar character) { return character == u'0' || character.isPunct(); });
    return value < 0.0 && !isZero ? QLatin1Char('-') + text : text;
}

QString BasicTools::iToHex(unsigned char value, int digits, QString prefix)
{
    return prefix + QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}
