#pragma once

#include <QPointF>
#include <QSize>
#include <QtAlgorithms>

#include <vector>

/**
 * Which pixels of a rectangle a round pen has covered, one bit each.
 *
 * A segment covers a capsule: the band of the pen's width along it and a half disc at either end. That is convex: every
 * row of pixels cuts it in one interval, and to cover it is to set the bits of these intervals.
 *
 * All lengths and positions are in device pixels from the rectangle's upper left corner; the centre of the first pixel
 * is (0.5, 0.5). A plain value.
 */
class CoverageMask
{
public:
    /// Nothing is covered. \a size is not negative, \a radius (half the pen's width) above 0.
    CoverageMask(const QSize &size, double radius);

    /// The sides of the rectangle that a point is beyond by more than the radius, a bit for each. When two points are
    /// beyond the same side, nothing between them covers a pixel.
    unsigned sidesBeyond(const QPointF &point) const
    {
        return (point.x() < -m_radius ? 1U : 0U) | (point.x() > m_size.width() + m_radius ? 2U : 0U) |
               (point.y() < -m_radius ? 4U : 0U) | (point.y() > m_size.height() + m_radius ? 8U : 0U);
    }

    /// Covers what lies within the radius of a segment; coordinates are within 1e300.
    void addSegment(const QPointF &from, const QPointF &to);

    /// Calls \a visit(row, firstColumn, covered) for every 64 columns in a row of which some are covered; the bits of
    /// \a covered stand for the columns from the first one on, and those right of the rectangle mean nothing. Some rows
    /// before, \a expect(row, firstColumn) announces where the first one in 64 columns will be.
    template<typename Visitor, typename Expectation> void visitWords(Visitor visit, Expectation expect) const;

private:
    using Word = quint64;
    static constexpr int wordBits = 64;
    static constexpr int rowsAhead = 8; // far enough for memory to answer, near enough for the cache to keep it

    bool cutToReach(QPointF *from, QPointF *to) const;

    QSize m_size;
    double m_radius;
    // Margins on all sides, in which the capsule of a segment within the pen's reach stays: nothing is left to check
    // where bits are set.
    int m_marginRows;
    int m_marginColumns; // whole words
    int m_wordsPerRow;
    std::vector<Word> m_words;
};

template<typename Visitor, typename Expectation> void CoverageMask::visitWords(Visitor visit, Expectation expect) const
{
    for (int row = 0; row < m_size.height(); ++row) {
        const size_t firstWord = static_cast<size_t>(row + m_marginRows) * static_cast<size_t>(m_wordsPerRow);
        const Word *const words = m_words.data() + firstWord + m_marginColumns / wordBits;
        const Word *const wordsAhead = words + rowsAhead * m_wordsPerRow; // no farther than the margin
        const bool isAnyAhead = row + rowsAhead < m_size.height();
        for (int column = 0; column < m_size.width(); column += wordBits) {
            const Word bitsAhead = wordsAhead[column / wordBits];
            if (isAnyAhead && bitsAhead != 0) {
                const int first = column + static_cast<int>(qCountTrailingZeroBits(bitsAhead));
                expect(row + rowsAhead, first < m_size.width() ? first : column);
            }
            const Word covered = words[column / wordBits];
            if (covered != 0) {
                visit(row, column, covered);
            }
        }
    }
}
