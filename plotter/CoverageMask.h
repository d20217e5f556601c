#pragma once

#include "CapsuleBits.h"

#include <QPointF>
#include <QSize>
#include <QtAlgorithms>

#include <vector>

/**
 * Which pixels of a rectangle a round pen has covered, one bit each.
 *
 * A segment covers a capsule: the band of the pen's width along it and a half disc at either end. A capsule is convex:
 * it covers one interval in each row of pixels, and the bits of these intervals are set.
 *
 * All lengths and positions are in device pixels from the rectangle's upper left corner; the centre of the first pixel
 * is (0.5, 0.5). A plain value.
 */
class CoverageMask
{
public:
    /// Empty until reset().
    CoverageMask() = default;

    /// Begins with no pixel covered. \a size is not negative, \a radius (half the pen's width) above 0.
    ///
    /// Keeps the memory of an earlier use: new memory would cost more time than clearing it.
    void reset(const QSize &size, double radius);

    /// A bit for each side of the rectangle that a point is beyond by more than the radius. A segment between two
    /// points beyond the same side covers no pixel.
    unsigned sidesBeyond(const QPointF &point) const
    {
        return (point.x() < -m_radius ? 1U : 0U) | (point.x() > m_size.width() + m_radius ? 2U : 0U) |
               (point.y() < -m_radius ? 4U : 0U) | (point.y() > m_size.height() + m_radius ? 8U : 0U);
    }

    /// Covers what lies within the radius of a segment; coordinates are within 1e300.
    void addSegment(const QPointF &from, const QPointF &to);

    /// Calls \a visit(row, firstColumn, covered) for every word of 64 columns in which some are covered. The bits of
    /// \a covered are these columns from \a firstColumn on; bits right of the rectangle are undefined. Some rows
    /// earlier \a expect(row, firstColumn) is called, for prefetching.
    template<typename Visitor, typename Expectation> void visitWords(Visitor visit, Expectation expect);

private:
    using Word = quint64;
    static constexpr int wordBits = 64;
    static constexpr int rowsAhead = 8; // long enough for a memory access, short enough to stay in the cache

    bool cutToReach(QPointF *from, QPointF *to) const;
    void addWaiting();

    QSize m_size;
    double m_radius = 0.0;
    // Margins on all sides that contain the capsules of all segments within the pen's reach, so that bits are set
    // without checks.
    int m_marginRows = 0;
    int m_marginColumns = 0; // whole words
    int m_wordsPerRow = 0;
    std::vector<Word> m_words;
    int m_waitingCount = 0;
    PenSegment m_waiting[maximumCapsules]; // not yet added: some together take less time than one after the other
};

template<typename Visitor, typename Expectation> void CoverageMask::visitWords(Visitor visit, Expectation expect)
{
    addWaiting();
    for (int row = 0; row < m_size.height(); ++row) {
        const size_t firstWord = static_cast<size_t>(row + m_marginRows) * static_cast<size_t>(m_wordsPerRow);
        const Word *const words = m_words.data() + firstWord + m_marginColumns / wordBits;
        const Word *const wordsAhead = words + rowsAhead * m_wordsPerRow; // at most in the margin
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
