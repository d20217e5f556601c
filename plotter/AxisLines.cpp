#include "AxisLines.h"

#include <QPainter>

AxisLines::AxisLines(QPainter *painter)
    : m_painter(painter), m_ratio(painter->device()->devicePixelRatioF()), m_width(qMax(1, qRound(m_ratio)))
{
}

void AxisLines::drawHorizontal(int left, int right, int y, const QColor &color) const
{
    fill(toDevice(left), toDevice(y), toDevice(right) + m_width, toDevice(y) + m_width, color);
}

void AxisLines::drawVertical(int x, int top, int bottom, const QColor &color) const
{
    fill(toDevice(x), toDevice(top), toDevice(x) + m_width, toDevice(bottom) + m_width, color);
}

void AxisLines::drawFrame(int left, int top, int right, int bottom, const QColor &color) const
{
    drawHorizontal(left, right, top, color);
    if (bottom > top) {
        drawHorizontal(left, right, bottom, color);
    }
    const int firstRow = toDevice(top) + m_width;
    const int endRow = toDevice(bottom);
    fill(toDevice(left), firstRow, toDevice(left) + m_width, endRow, color);
    if (right > left) {
        fill(toDevice(right), firstRow, toDevice(right) + m_width, endRow, color);
    }
}

int AxisLines::toDevice(int position) const
{
    return qRound(position * m_ratio);
}

/// Fills a rectangle of device pixels, without its right and bottom edges.
void AxisLines::fill(int left, int top, int right, int bottom, const QColor &color) const
{
    if (right <= left || bottom <= top) {
        return;
    }
    // In widget pixels, which the painter maps back and rounds to these device pixels.
    m_painter->fillRect(QRectF(left / m_ratio, top / m_ratio, (right - left) / m_ratio, (bottom - top) / m_ratio),
                        color);
}
