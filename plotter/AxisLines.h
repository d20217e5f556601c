#pragma once

class QColor;
class QPainter;

/**
 * Draws horizontal and vertical lines as filled rectangles: QPainter::drawLine() takes up to 150 ns per pixel of them.
 *
 * At a pixel ratio of 1 the pixels are those of a painter's line with a pen of width 1. At any other ratio all lines
 * are equally wide, the ratio rounded to whole device pixels, and have hard edges. Positions are in widget pixels; both
 * ends belong to a line. Must not outlive the painter, which must have no transformation.
 */
class AxisLines
{
public:
    explicit AxisLines(QPainter *painter);

    void drawHorizontal(int left, int right, int y, const QColor &color) const;
    void drawVertical(int x, int top, int bottom, const QColor &color) const;
    /// Fills every pixel once, so that the corners of a translucent frame are not darker.
    void drawFrame(int left, int top, int right, int bottom, const QColor &color) const;

private:
    int toDevice(int position) const;
    void fill(int left, int top, int right, int bottom, const QColor &color) const;

    QPainter *m_painter;
    double m_ratio;
    int m_width; // of all lines, device pixels
};
