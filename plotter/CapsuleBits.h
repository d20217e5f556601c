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

/**
 * Sets the bits of all pixels whose centre lies within the pen's radius of a segment.
 *
 * Nothing is checked: all coordinates are numbers, and around what the pen reaches there are another 8 rows and 64
 * columns of words.
 *
 * The source of this function is compiled for finite numbers only. It uses no function that other sources share, so
 * that the linker takes no copy from it that does not know NaN.
 */
void addCapsule(const BitRows &rows, const PenSegment &segment);
