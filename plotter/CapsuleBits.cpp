#include "CapsuleBits.h"

#include <math.h>
#include <string.h>

namespace
{

using Word = quint64;

constexpr int wordBits = 64;
constexpr int halfWordBits = 32;
constexpr int byteBits = 8;
constexpr int maximumShortColumns =
    wordBits - byteBits;            // starting at any bit of a byte, they fit in the word at that byte
constexpr float flatPixels = 1e-6F; // a segment that rises less counts as level: its slope is not usable
constexpr int blockRows = 8;        // rows whose edges are computed in one loop
// Maximum width of a capsule for addNarrowRows(), columns: bit 31 of its 32 bits is the sign in powerOfTwo().
constexpr int narrowColumns = 30;
constexpr int endRows = 4;       // at either end of a capsule, computed in one loop
constexpr int tallRows = 40;     // from this height on the band has a loop of its own
constexpr int fractionBits = 32; // of columns in fixed point
constexpr double fixedPointOne = 4294967296.0;

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "two neighbouring halves of words are read as one word");

// Instead of std::min and std::max, see addCapsules().
template<typename Number> inline Number smaller(Number a, Number b)
{
    return b < a ? b : a;
}

template<typename Number> inline Number larger(Number a, Number b)
{
    return a < b ? b : a;
}

/// The first row whose centre lies beyond \a edge, which is not below -0.5.
int beyond(double edge)
{
    const double firstCentre = edge + 0.5; // truncated, not rounded: centres are in the middle of pixels
    return static_cast<int>(firstCentre);
}

qint64 fixedPoint(double value)
{
    return static_cast<qint64>(value * fixedPointOne);
}

/// 2 to the power of \a exponent, 0 to 30. Built from the float's exponent because SSE2 cannot vectorise shifts by a
/// variable count.
quint32 powerOfTwo(int exponent)
{
    constexpr int exponentBias = 127; // of a number of single precision, IEEE 754
    constexpr int exponentShift = 23;
    const qint32 bits = (exponent + exponentBias) << exponentShift;
    float power;
    static_assert(sizeof power == sizeof bits, "");
    memcpy(&power, &bits, sizeof power);
    return static_cast<quint32>(static_cast<qint32>(power));
}

/**
 * The intervals of pixels, one per row, within the radius of a segment.
 *
 * The segment goes from its upper end in the direction (dx, dy), dy >= 0. The left edge in a row belongs to the circle
 * around one point of the segment: the one tilt = radius * dx / length above the row, or the end nearest to that. The
 * point of the right edge is as far below the row. In a row that the capsule does not touch, both edges are equal and
 * the interval is empty.
 *
 * Positions are relative to a corner near the capsule, so that single precision is enough. Rows are measured at their
 * centres, columns half a pixel before: truncating an edge gives the first column whose centre lies beyond it.
 */
struct Capsule
{
    explicit Capsule(const PenSegment &segment)
    {
        // No branch on the direction: it is different for each segment, and would be mispredicted.
        const double downward = segment.toY < segment.fromY ? -1.0 : 1.0;
        const double deltaX = (segment.toX - segment.fromX) * downward;
        const double leftX = smaller(segment.fromX, segment.toX);
        const double rightX = larger(segment.fromX, segment.toX);
        const double upperY = smaller(segment.fromY, segment.toY);
        const double lowerY = larger(segment.fromY, segment.toY);
        firstColumn = static_cast<int>(leftX - segment.radius);
        endColumn = static_cast<int>(rightX + segment.radius) + 1;
        firstRow = beyond(upperY - segment.radius);
        endRow = beyond(lowerY + segment.radius);
        x = static_cast<float>((deltaX < 0.0 ? rightX : leftX) - firstColumn + 0.5);
        y = static_cast<float>(upperY - firstRow - 0.5);
        dx = static_cast<float>(deltaX);
        dy = larger(static_cast<float>(lowerY - upperY), flatPixels);
        radius = static_cast<float>(segment.radius);
        tilt = radius * dx / sqrtf(dx * dx + dy * dy);
        perRow = 1.0F / dy;
    }

    /// Where the capsule begins (\a side -1) or ends (\a side 1) in a row.
    float edge(float row, float side) const
    {
        const float below = row - y;
        const float along = smaller(larger((below + side * tilt) * perRow, 0.0F), 1.0F);
        const float distance = below - along * dy;
        const float halfChord = sqrtf(larger(radius * radius - distance * distance, 0.0F));
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

inline Word *wordsOfRow(const BitRows &rows, int row)
{
    return rows.words + static_cast<qptrdiff>(row) * rows.wordsPerRow;
}

inline void addInterval(Word *row, int firstColumn, int endColumn)
{
    const auto first = static_cast<unsigned>(firstColumn);
    const auto end = static_cast<unsigned>(larger(firstColumn, endColumn));
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

/// All rows of a capsule in blocks of blockRows; the rows of the last block beyond the capsule are empty.
void addNarrowRows(const BitRows &rows, const Capsule &shape)
{
    const Capsule capsule = shape; // local copy: the compiler knows that stores into the words do not alias it
    const int rowCount = capsule.endRow - capsule.firstRow;
    const qptrdiff bytesPerRow = rows.wordsPerRow * static_cast<qptrdiff>(sizeof(Word));
    auto *bytes = reinterpret_cast<uchar *>(wordsOfRow(rows, capsule.firstRow)) +
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
            memcpy(&word, bytes, sizeof word);
            word |= static_cast<Word>(bits) << shift;
            memcpy(bytes, &word, sizeof word);
            bytes += bytesPerRow;
        }
    }
}

/// By number of columns: as many bits, from the lowest on. Faster than shifts by a variable count.
struct LowBits
{
    constexpr LowBits() : words()
    {
        for (int columns = 0; columns < wordBits; ++columns) {
            words[columns] = (Word(1) << columns) - 1;
        }
    }

    Word words[wordBits];
};
constexpr LowBits lowBits;

/// Like addInterval() without a branch, for at most maximumShortColumns.
inline void addShortInterval(Word *row, int firstColumn, int endColumn)
{
    const auto first = static_cast<unsigned>(firstColumn);
    auto *const bytes = reinterpret_cast<uchar *>(row) + first / byteBits;
    const Word bits = lowBits.words[endColumn - firstColumn] << (first % byteBits);
    Word word;
    memcpy(&word, bytes, sizeof word);
    word |= bits;
    memcpy(bytes, &word, sizeof word);
}

/// At least \a count rows at either end of a capsule, some of both ends in one loop without a branch. A row beyond the
/// other end gets an empty interval.
void addEnds(const BitRows &rows, const Capsule &shape, int count)
{
    const Capsule capsule = shape; // local copies: see addNarrowRows()
    const qptrdiff wordsPerRow = rows.wordsPerRow;
    const int rowCount = capsule.endRow - capsule.firstRow;
    const bool isShort = capsule.endColumn - capsule.firstColumn < maximumShortColumns;
    for (int done = 0; done < count; done += endRows) {
        const int toLower = rowCount - 2 * (done + endRows); // rows between the two parts of the block
        int firstColumns[blockRows];
        int endColumns[blockRows];
        for (int index = 0; index < blockRows; ++index) {
            const auto row = static_cast<float>(done + index + (index < endRows ? 0 : toLower));
            const int first = static_cast<int>(capsule.edge(row, -1.0F));
            const int end = static_cast<int>(capsule.edge(row, 1.0F));
            firstColumns[index] = capsule.firstColumn + first;
            endColumns[index] = capsule.firstColumn + larger(first, end);
        }
        Word *words = wordsOfRow(rows, capsule.firstRow + done);
        for (int index = 0; index < blockRows; ++index) {
            if (index == endRows) {
                words += toLower * wordsPerRow;
            }
            if (isShort) {
                addShortInterval(words, firstColumns[index], endColumns[index]);
            } else {
                addInterval(words, firstColumns[index], endColumns[index]);
            }
            words += wordsPerRow;
        }
    }
}

/// The rows of a capsule away from its ends, where both edges are straight lines; columns in fixed point.
struct Band
{
    int firstRow;
    int endRow;
    qint64 left; // in the first row
    qint64 right;
    qint64 step; // from row to row
};

/// Adds the ends of a capsule, and returns what is left.
Band addEndsOf(const BitRows &rows, const Capsule &capsule)
{
    const float reach = capsule.tilt < 0.0F ? -capsule.tilt : capsule.tilt; // farther from both ends the edges are
    const int bandRow = capsule.firstRow + static_cast<int>(capsule.y + reach) + 1; // straight lines
    const int firstRow = smaller(bandRow, capsule.endRow);
    const int endRow = larger(capsule.firstRow + static_cast<int>(capsule.y + capsule.dy - reach), firstRow);
    addEnds(rows, capsule, larger(firstRow - capsule.firstRow, capsule.endRow - endRow));
    const auto position = static_cast<float>(firstRow - capsule.firstRow);
    return {firstRow, endRow, fixedPoint(static_cast<double>(capsule.edge(position, -1.0F)) + capsule.firstColumn),
            fixedPoint(static_cast<double>(capsule.edge(position, 1.0F)) + capsule.firstColumn),
            firstRow < endRow ? fixedPoint(static_cast<double>(capsule.dx) / capsule.dy) : 0};
}

void addBand(const BitRows &rows, const Band &band)
{
    const qptrdiff wordsPerRow = rows.wordsPerRow; // local copies: stores into the words do not alias them
    const qint64 step = band.step;
    qint64 left = band.left;
    qint64 right = band.right;
    Word *words = wordsOfRow(rows, band.firstRow);
    const int rowCount = band.endRow - band.firstRow;
    if (right >= left && (right - left) >> fractionBits < maximumShortColumns) {
        for (int row = 0; row < rowCount; ++row) {
            addShortInterval(words, static_cast<int>(left >> fractionBits), static_cast<int>(right >> fractionBits));
            left += step;
            right += step;
            words += wordsPerRow;
        }
        return;
    }
    for (int row = 0; row < rowCount; ++row) {
        addInterval(words, static_cast<int>(left >> fractionBits), static_cast<int>(right >> fractionBits));
        left += step;
        right += step;
        words += wordsPerRow;
    }
}

} // namespace

void addCapsules(const BitRows &rows, const PenSegment *segments, int count)
{
    // Bands come last, each ready to be added: a processor that has mispredicted the end of a band's loop goes on at
    // once with the next, instead of waiting for the roots and quotients of the next capsule.
    Band bands[maximumCapsules];
    int bandCount = 0;
    for (int index = 0; index < count; ++index) {
        const Capsule capsule(segments[index]);
        if (capsule.endColumn - capsule.firstColumn <= narrowColumns && capsule.endRow - capsule.firstRow <= tallRows) {
            addNarrowRows(rows, capsule);
        } else {
            bands[bandCount++] = addEndsOf(rows, capsule);
        }
    }
    for (int index = 0; index < bandCount; ++index) {
        addBand(rows, bands[index]);
    }
}
