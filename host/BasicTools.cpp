#include "host/BasicTools.h"

#include <QLocale>
#include <QtMath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr unsigned int minimumIntervals = 5;
constexpr unsigned int maximumIntervals = 10;
/// The span between -4e307 and 4e307 does not overflow. Both are multiples of every step that such a span can get, so
/// that rounding outwards does not exceed them.
constexpr double maximumBound = 4e307;
/// A span that is smaller in relation to its bounds leaves too few digits for ticks that differ.
constexpr double minimumRelativeSpan = 1e-12;
constexpr double minimumSpan = 1e-300;
/// Relative error of the wanted step that does not lead to the next wider step: the rounding error of a span of
/// minimumRelativeSpan.
constexpr double stepTolerance = 1e-3;

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

    /// \a count steps, rounded once: 3 / 10 is the double nearest to 0.3, 3 * 0.1 is not.
    double times(double count) const
    {
        const double units = count * mantissa;
        const double bound =
            exponent < 0 ? units / std::pow(10.0, -exponent) : units * std::pow(10.0, static_cast<double>(exponent));
        return bound + 0.0; // no negative zero
    }

    /// The largest n with n steps <= \a bound. The quotient is rounded and only a first guess.
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
    return qBound(-maximumBound, bound, maximumBound);
}

/// Swaps bounds (within +-maximumBound) that are in the wrong order, and widens a range whose ticks would not differ.
void makeOrderedRange(double &min, double &max)
{
    if (min > max) {
        std::swap(min, max);
    }
    const double needed = qMax(minimumSpan, minimumRelativeSpan * qMax(std::fabs(min), std::fabs(max)));
    if (max - min >= needed) {
        return;
    }
    const double margin = max > min ? needed : qMax(1.0, needed);
    min = qMax(-maximumBound, min - margin);
    max = qMin(maximumBound, max + margin);
}

} // namespace

void BasicTools::adjustLinearAxis(double &min, double &max, unsigned int &ticks)
{
    double lower = finiteBound(min, max);
    double upper = finiteBound(max, min);
    makeOrderedRange(lower, upper);

    const unsigned int wanted = qBound(minimumIntervals, ticks, maximumIntervals);
    TickStep step = smallestStep((upper - lower) / wanted);
    double first = step.countBelow(lower);
    double last = step.countAbove(upper);
    // Rounding outwards may add an interval. An axis of more than the maximum would get another step at the next call.
    while (last - first > maximumIntervals) {
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
    QLocale locale;
    // The C locale leaves groups out unless it is asked for them.
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::NumberOptions(QLocale::OmitGroupSeparator));
    decimals = qBound(0, decimals, 15);
    // A negative value that is rounded to zero is written without its sign: "-0" on an axis looks like a fault.
    const QString zero = locale.toString(0.0, 'f', decimals);
    const QString magnitude = locale.toString(std::fabs(value), 'f', decimals);
    return magnitude == zero ? zero : locale.toString(value, 'f', decimals);
}

QString BasicTools::iToHex(unsigned char value, int digits, QString prefix)
{
    return prefix + QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}
