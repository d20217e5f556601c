#include "CoverageMask.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int spareRows = 8; // addCapsules() may write to them

/// Where the segment from (\a from, \a fromOther) to (\a to, \a toOther) crosses \a at in the first coordinate, which
/// lies between \a from and \a to: the other coordinate there.
double crossing(double from, double fromOther, double to, double toOther, double at)
{
    if (std::abs(from) > std::abs(to)) { // computed from the nearer end, which has the smaller rounding error
        std::swap(from, to);
        std::swap(fromOther, toOther);
    }
    return fromOther + (at - from) / (to - from) * (toOther - fromOther);
}

/// Clips to \a low to \a high in the first coordinate; false when nothing is left.
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

void CoverageMask::reset(const QSize &size, double radius)
{
    m_waitingCount = 0;
    m_size = size;
    m_radius = radius;
    m_marginRows = static_cast<int>(2.0 * radius) + 2 + spareRows;
    m_marginColumns = (m_marginRows + wordBits - 1) / wordBits * wordBits;
    m_wordsPerRow = (size.width() + wordBits - 1 + 2 * m_marginColumns) / wordBits;
    m_words.assign(static_cast<size_t>(m_wordsPerRow) * static_cast<size_t>(size.height() + 2 * m_marginRows), 0);
}

bool CoverageMask::cutToReach(QPointF *from, QPointF *to) const
{
    return cut(&from->rx(), &from->ry(), &to->rx(), &to->ry(), -m_radius, m_size.width() + m_radius) &&
           cut(&from->ry(), &from->rx(), &to->ry(), &to->rx(), -m_radius, m_size.height() + m_radius);
}

void CoverageMask::addSegment(const QPointF &from, const QPointF &to)
{
    const auto add = [this](const QPointF &start, const QPointF &end) {
        // Doubles, not points: copying a QPointF right after its halves were stored defeats store forwarding.
        m_waiting[m_waitingCount++] = {start.x() + m_marginColumns, start.y() + m_marginRows, end.x() + m_marginColumns,
                                       end.y() + m_marginRows, m_radius};
        if (m_waitingCount == maximumCapsules) {
            addWaiting();
        }
    };
    if ((sidesBeyond(from) | sidesBeyond(to)) == 0) {
        add(from, to);
        return;
    }
    QPointF start = from;
    QPointF end = to;
    if (cutToReach(&start, &end)) {
        add(start, end);
    }
}

void CoverageMask::addWaiting()
{
    addCapsules({m_words.data(), m_wordsPerRow}, m_waiting, m_waitingCount);
    m_waitingCount = 0;
}
