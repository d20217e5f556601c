#include "CoverageMask.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace
{

constexpr float flatPixels = 1e-6F; // what rises less is as good as level, and has no usable slope
constexpr int blockRows = 8;        // whose edges are computed at once
constexpr int narrowColumns = 30;   // of a capsule whose rows fit into 32 bits each, with the sign to spare
constexpr int tallRows = 40;        // are worth a loop of their own for the band
constexpr int halfWordBits = 32;
constexpr int fractionBits = 32; // of columns in fixed point
constexpr double fixedPointOne = 4294967296.0;

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "two neighbouring halves of words are read as one word");

/// The first row whose centre lies beyond \a edge, which is not below -0.5.
int beyond(double edge)
{
    const double firstCentre = edge + 0.5; // cut, not rounded: centres are in the middle of pixels
    return static_cast<int>(firstCentre);
}

qint64 fixedPoint(double value)
{
    return static_cast<qint64>(value * fixedPointOne);
}

/// 2 to the power of \a exponent, 0 to 30. Like all that edges go through, it is arithmetic that processors do on
/// several numbers at once, which shifts by different counts are not.
quint32 powerOfTwo(int exponent)
{
    constexpr int exponentBias = 127; // of a number of single precision, IEEE 754
    constexpr int exponentShift = 23;
    const qint32 bits = (exponent + exponentBias) << exponentShift;
    float power;
    static_assert(sizeof power == sizeof bits, "");
    std::memcpy(&power, &bits, sizeof power);
    return static_cast<quint32>(static_cast<qint32>(power));
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
 * What the points within the radius of a segment are in rows of pixels.
 *
 * The segment goes from its upper end in the direction (dx, dy), dy >= 0. The left edge in a row belongs to the circle
 * around one point of the segment: the one tilt = radius * dx / length above the row, or the end nearest to that. The
 * point of the right edge is as far below the row. Both edges of a row that is out of reach are in one place.
 *
 * Positions count from a corner near the capsule, rows from their centres and columns from half a pixel before: the
 * whole part of an edge is the first column whose centre lies beyond it, and single precision is enough.
 */
struct CoverageMask::Capsule
{
    // Numbers instead of points: to copy a point whose coordinates have just been written stalls the processor.
    Capsule(double fromX, double fromY, double toX, double toY, double penRadius)
    {
        // Nothing here branches on the direction, which changes at random from one segment to the next.
        const double downward = toY < fromY ? -1.0 : 1.0;
        const double deltaX = (toX - fromX) * downward;
        const double leftX = std::min(fromX, toX);
        const double rightX = std::max(fromX, toX);
        const double upperY = std::min(fromY, toY);
        const double lowerY = std::max(fromY, toY);
        firstColumn = static_cast<int>(leftX - penRadius);
        endColumn = static_cast<int>(rightX + penRadius) + 1;
        firstRow = beyond(upperY - penRadius);
        endRow = beyond(lowerY + penRadius);
        x = static_cast<float>((deltaX < 0.0 ? rightX : leftX) - firstColumn + 0.5);
        y = static_cast<float>(upperY - firstRow - 0.5);
        dx = static_cast<float>(deltaX);
        dy = std::max(static_cast<float>(lowerY - upperY), flatPixels);
        radius = static_cast<float>(penRadius);
        tilt = radius * dx / std::sqrt(dx * dx + dy * dy);
        perRow = 1.0F / dy;
    }

    /// Where the capsule begins (\a side -1) or ends (\a side 1) in a row.
    float edge(float row, float side) const
    {
        const float below = row - y;
        const float along = std::min(std::max((below + side * tilt) * perRow, 0.0F), 1.0F);
        const float distance = below - along * dy;
        const float halfChord = std::sqrt(std::max(radius * radius - distance * distance, 0.0F));
        return x + along * dx + side * halfChord;
    }

    int firstColumn;
    int endColumn;
    int firstRow;
    int endRow;
    float x; // of the upper end
    float y;
    float dx;
    float dy;
    float radius;
    float tilt;
    float perRow; // along the segment, as a part of it
};

CoverageMask::CoverageMask(const QSize &size, double radius)
    : m_size(size)
    , m_radius(radius)
    , m_marginRows(static_cast<int>(2.0 * radius) + 2 + blockRows)
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
    const auto capsule = [this](const QPointF &start, const QPointF &end) {
        return Capsule(start.x() + m_marginColumns, start.y() + m_marginRows, end.x() + m_marginColumns,
                       end.y() + m_marginRows, m_radius);
    };
    if ((sidesBeyond(from) | sidesBeyond(to)) == 0) {
        addCapsule(capsule(from, to));
        return;
    }
    QPointF start = from;
    QPointF end = to;
    if (cutToReach(&start, &end)) {
        addCapsule(capsule(start, end));
    }
}

inline void CoverageMask::addCapsule(const Capsule &capsule)
{
    if (capsule.endColumn - capsule.firstColumn <= narrowColumns && capsule.endRow - capsule.firstRow <= tallRows) {
        addNarrowRows(capsule);
        return;
    }
    const float reach = std::abs(capsule.tilt); // from the ends, where no circle is an edge beyond
    const int bandRow = capsule.firstRow + static_cast<int>(capsule.y + reach) + 1;
    const int firstBandRow = std::min(bandRow, capsule.endRow);
    const int endBandRow = std::max(capsule.firstRow + static_cast<int>(capsule.y + capsule.dy - reach), firstBandRow);
    addRows(capsule, capsule.firstRow, firstBandRow);
    addRowsOfBand(capsule, firstBandRow, endBandRow);
    addRows(capsule, endBandRow, capsule.endRow);
}

/// All rows of a capsule, some at a time and a few beyond, which are empty; no row is looked at on its own.
void CoverageMask::addNarrowRows(const Capsule &shape)
{
    const Capsule capsule = shape; // of which it is clear that no writing into the mask changes it
    const int rowCount = capsule.endRow - capsule.firstRow;
    const qptrdiff bytesPerRow = m_wordsPerRow * static_cast<qptrdiff>(sizeof(Word));
    auto *bytes = reinterpret_cast<uchar *>(wordsOfRow(capsule.firstRow)) +
                  capsule.firstColumn / halfWordBits * static_cast<qptrdiff>(sizeof(quint32));
    const unsigned shift = static_cast<unsigned>(capsule.firstColumn) % halfWordBits;
    for (int firstRow = 0; firstRow < rowCount; firstRow += blockRows) {
        quint32 columns[blockRows];
        for (int index = 0; index < blockRows; ++index) {
            const auto row = static_cast<float>(firstRow + index);
            columns[index] = powerOfTwo(static_cast<int>(capsule.edge(row, 1.0F))) -
                             powerOfTwo(static_cast<int>(capsule.edge(row, -1.0F)));
        }
        for (const quint32 bits : columns) {
            Word word;
            std::memcpy(&word, bytes, sizeof word);
            word |= static_cast<Word>(bits) << shift;
            std::memcpy(bytes, &word, sizeof word);
            bytes += bytesPerRow;
        }
    }
}

/// Any rows of a capsule.
void CoverageMask::addRows(const Capsule &capsule, int firstRow, int endRow)
{
    Word *words = wordsOfRow(firstRow);
    for (int row = firstRow; row < endRow; ++row) {
        const auto position = static_cast<float>(row - capsule.firstRow);
        addInterval(words, capsule.firstColumn + static_cast<int>(capsule.edge(position, -1.0F)),
                    capsule.firstColumn + static_cast<int>(capsule.edge(position, 1.0F)));
        words += m_wordsPerRow;
    }
}

/// The rows of a capsule in which no end is near: both edges go down in a straight line.
void CoverageMask::addRowsOfBand(const Capsule &capsule, int firstRow, int endRow)
{
    const auto position = static_cast<float>(firstRow - capsule.firstRow);
    qint64 left = fixedPoint(static_cast<double>(capsule.edge(position, -1.0F)) + capsule.firstColumn);
    qint64 right = fixedPoint(static_cast<double>(capsule.edge(position, 1.0F)) + capsule.firstColumn);
    const qint64 step = firstRow < endRow ? fixedPoint(static_cast<double>(capsule.dx) / capsule.dy) : 0;
    Word *words = wordsOfRow(firstRow);
    for (int row = firstRow; row < endRow; ++row) {
        addInterval(words, static_cast<int>(left >> fractionBits), static_cast<int>(right >> fractionBits));
        left += step;
        right += step;
        words += m_wordsPerRow;
    }
}
