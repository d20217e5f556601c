#pragma once

#include <QtGlobal>

/// Rows of pixels, one bit each, in words of 64.
struct BitRows
{
    quint64 *words;
    int wordsPerRow;
};

/// A segment and the radius of the pen that draws it, device pixels from the corner of the first row.
struct PenSegment
{
    double fromX;
    double fromY;
    double toX;
    double toY;
    double radius; ///< above 0
};

constexpr int maximumCapsules = 64; ///< in one call of addCapsules()

/**
 * Sets the bits of all pixels whose centre lies within the pen's radius of one of the \a count \a segments.
 *
 * Without checks: all coordinates must be finite, and \a rows must extend 8 rows and 64 columns beyond all pixels that
 * the pen reaches.
 *
 * The source file is compiled with -ffinite-math-only. It calls no inline function that other files also use: the
 * linker keeps one copy of such a function, and this file's copy would not handle NaN.
 */
void addCapsules(const BitRows &rows, const PenSegment *segments, int count);
