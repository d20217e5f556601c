#include "CoverageMask.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr double flatPixels = 1e-6; // what rises less is as good as level, and has no usable slope
constexpr int fewRows = 8;          // are not worth a loop of their own
constexpr int fractionBits = 32;    // of columns in fixed point
constexpr double fixedPointOne = 4294967296.0;

/// The first row or column whose centre lies beyond \a edge, which is not below -0.5.
int beyond(double edge)
{
    const double firstCentre = edge + 0.5; // cut, not rounded: centres are in the middle of pixels
    return static_cast<int>(firstCentre);
}

/// The same as the whole part of a number in fixed point.
qint64 fixedBeyond(double edge)
{
    return static_cast<qint64>((edge + 0.5) * fixedPointOne);
}

double squared(double value)
{
    return value * value;
}

/// Where the segment from (\a from, \a fromOther) to (\a to, \a toOther) crosses \a at in the first coordinate, which
/// lies between \a from and \a to: the other coordinate there.
double crossing(double from, double fromOther, double to, double toOther, double at)
{
    if (std::abs(from) > std::abs(to)) { // the end nearby is the exact one
        std::swap(from, to);
        std::swap(fromOther, toOther);
    }
    return fromOther + (at - from) / (to - from) * (toOther - fromOther);
}

/// Cuts off what lies outside of \a low to \a high in the first coordinate; false when that is all.
bool cut(double *from, double *fromOther, double *to, double *toOther, double low, double high)
{
    if ((*from < low && *to < low) || (*from > high && *to > high)) {
        return false;
    }
    const auto cutEnd = [low, high](double *end, double *endOther, double start, double startOther) {
        if (*end < low || *end > high) {
            const double at = *end < low ? low : high;
            *endOther = crossing(start, startOther, *end, *endOther, at);
            *end = at;
        }
    };
    cutEnd(from, fromOther, *to, *toOther);
    cutEnd(to, toOther, *from, *fromOther);
    return true;
}

} // namespace

/**
 * What the points within radius of a segment are in one row of pixels.
 *
 * The segment goes from upper to lower in the direction (dx, dy) of length L, dy >= 0. The left edge of its band touches
 * the circles around the ends tilt = radius * dx / L below them, the right edge as much above them. Along a row, the
 * edges are radius * L / dy off the axis.
 */
struct CoverageMask::Capsule
{
    // Numbers instead of points: to copy a point whose coordinates have just been written stalls the processor.
    Capsule(double fromX, double fromY, double toX, double toY, const CoverageMask &mask) : radius(mask.m_radius)
    {
        const bool isUpward = toY < fromY;
        upperX = (isUpward ? toX : fromX) + mask.m_marginColumns;
        upperY = (isUpward ? toY : fromY) + mask.m_marginRows;
        lowerX = (isUpward ? fromX : toX) + mask.m_marginColumns;
        lowerY = (isUpward ? fromY : toY) + mask.m_marginRows;
        const double dx = lowerX - upperX;
        const double dy = lowerY - upperY;
        if (dy < flatPixels) {
            lowerY = upperY;
            tilt = dx < 0.0 ? -radius : radius;
            return;
        }
        const double length = std::sqrt(squared(dx) + squared(dy));
        tilt = radius * dx / length;
        columnsPerRow = dx / dy;
        halfWidth = radius * length / dy;
    }

    double axis(double row) const
    {
        return upperX + (row - upperY) * columnsPerRow;
    }

    /// Half of what a circle cuts out of a row at this distance from its centre.
    double halfChord(double distance) const
    {
        return std::sqrt(std::max(0.0, squared(radius) - squared(distance)));
    }

    double upperX;
    double upperY;
    double lowerX;
    double lowerY;
    double radius;
    double tilt;
    double columnsPerRow = 0.0;
    double halfWidth = 0.0; // of the band along a row
};

CoverageMask::CoverageMask(const QSize &size, double radius)
    : m_size(size)
    , m_radius(radius)
    , m_marginRows(static_cast<int>(2.0 * radius) + 2)
    , m_marginColumns((m_marginRows + wordBits - 1) / wordBits * wordBits)
    , m_wordsPerRow((size.width() + wordBits - 1 + 2 * m_marginColumns) / wordBits)
    , m_words(static_cast<size_t>(m_wordsPerRow) * static_cast<size_t>(size.height() + 2 * m_marginRows))
{
}

bool CoverageMask::cutToReach(QPointF *from, QPointF *to) const
{
    return cut(&from->rx(), &from->ry(), &to->rx(), &to->ry(), -m_radius, m_size.width() + m_radius) &&
           cut(&from->ry(), &from->rx(), &to->ry(), &to->rx(), -m_radius, m_size.height() + m_radius);
}

inline CoverageMask::Word *CoverageMask::wordsOfRow(int row)
{
    return m_words.data() + static_cast<size_t>(row) * static_cast<size_t>(m_wordsPerRow);
}

inline void CoverageMask::addInterval(Word *row, int firstColumn, int endColumn)
{
    const auto first = static_cast<unsigned>(firstColumn);
    const auto end = static_cast<unsigned>(std::max(firstColumn, endColumn));
    const Word fromFirst = ~Word(0) << (first % wordBits);
    const Word fromEnd = ~Word(0) << (end % wordBits);
    Word *word = row + first / wordBits;
    Word *const last = row + end / wordBits;
    if (word == last) {
        *word |= fromFirst & ~fromEnd;
        return;
    }
    *word |= fromFirst;
    while (++word < last) {
        *word = ~Word(0);
    }
    *last |= ~fromEnd;
}

void CoverageMask::addSegment(const QPointF &from, const QPointF &to)
{
    if ((sidesBeyond(from) | sidesBeyond(to)) == 0) {
        addCapsule(Capsule(from.x(), from.y(), to.x(), to.y(), *this));
        return;
    }
    QPointF start = from;
    QPointF end = to;
    if (cutToReach(&start, &end)) {
        addCapsule(Capsule(start.x(), start.y(), end.x(), end.y(), *this));
    }
}

void CoverageMask::addCapsule(const Capsule &capsule)
{
    const double reach = std::abs(capsule.tilt);
    const int firstRow = beyond(capsule.upperY - m_radius);
    const int endRow = beyond(capsule.lowerY + m_radius);
    const int firstBandRow = beyond(capsule.upperY + reach);
    const int endBandRow = beyond(capsule.lowerY - reach);
    if (endBandRow - firstBandRow < fewRows) {
        addRowsNearEnds(capsule, firstRow, endRow);
        return;
    }
    addRowsNearEnds(capsule, firstRow, firstBandRow);
    addRowsOfBand(capsule, firstBandRow, endBandRow);
    addRowsNearEnds(capsule, endBandRow, endRow);
}

/// Any rows of a capsule: on both sides, the edge is that of the band or one of the circles.
void CoverageMask::addRowsNearEnds(const Capsule &capsule, int firstRow, int endRow)
{
    const double reach = std::abs(capsule.tilt); // from the ends; no circle is the edge beyond
    Word *words = wordsOfRow(firstRow);
    for (int row = firstRow; row < endRow; ++row) {
        const double belowUpper = row + 0.5 - capsule.upperY;
        const double belowLower = row + 0.5 - capsule.lowerY;
        const double upperChord = belowUpper <= reach ? capsule.halfChord(belowUpper) : 0.0;
        const double lowerChord = belowLower >= -reach ? capsule.halfChord(belowLower) : 0.0;
        const double axis = capsule.axis(row + 0.5);
        const double left = belowUpper <= capsule.tilt   ? capsule.upperX - upperChord
                            : belowLower >= capsule.tilt ? capsule.lowerX - lowerChord
                                                         : axis - capsule.halfWidth;
        const double right = belowUpper <= -capsule.tilt   ? capsule.upperX + upperChord
                             : belowLower >= -capsule.tilt ? capsule.lowerX + lowerChord
                                                           : axis + capsule.halfWidth;
        addInterval(words, beyond(left), beyond(right));
        words += m_wordsPerRow;
    }
}

/// The rows of a capsule in which both edges are those of the band.
void CoverageMask::addRowsOfBand(const Capsule &capsule, int firstRow, int endRow)
{
    const double axis = capsule.axis(firstRow + 0.5);
    qint64 left = fixedBeyond(axis - capsule.halfWidth);
    qint64 right = fixedBeyond(axis + capsule.halfWidth);
    const auto step = static_cast<qint64>(capsule.columnsPerRow * fixedPointOne);
    Word *words = wordsOfRow(firstRow);
    for (int row = firstRow; row < endRow; ++row) {
        addInterval(words, static_cast<int>(left >> fractionBits), static_cast<int>(right >> fractionBits));
        left += step;
        right += step;
        words += m_wordsPerRow;
    }
}
