#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QVector>

/// A colour prepared for blending.
struct BlendColor
{
    quint32 source; ///< added to a pixel: premultiplied ARGB
    quint16 kept;   ///< share of the pixel that is kept, 0 to 255
};

/// One pixel with \a color over it, rounded as Qt's painter does.
inline quint32 blended(quint32 pixel, const BlendColor &color)
{
    // All four channels in one multiplication, each in 16 bits.
    constexpr quint64 channels = 0x00ff00ff00ff00ff;
    constexpr quint64 halves = 0x0080008000800080;
    quint64 wide = ((static_cast<quint64>(pixel) << 24 | pixel) & channels) * color.kept;
    wide = ((wide + ((wide >> 8) & channels) + halves) >> 8) & channels;
    return color.source + static_cast<quint32>(wide >> 24 | wide);
}

constexpr int blendedPixels = 64; ///< by one call of a BlendWay

/// Blends \a color over those of 64 \a pixels whose bit is set in \a covered, as blended() does. All 64 pixels are
/// read; those that are not covered may be rewritten with their old value.
using BlendWay = void (*)(quint32 *pixels, quint64 covered, const BlendColor &color);

/// The ways that this processor supports, the fastest last.
QVector<BlendWay> blendWays();

/**
 * Blends one colour over pixels in a part of an image, rounding as Qt's painter does.
 *
 * A plain value that must not outlive the image.
 */
class RunBlender
{
public:
    /// \param image 32 bits per pixel, opaque or premultiplied; not owned
    /// \param part  within the image, device pixels
    RunBlender(QImage *image, const QRect &part, const QColor &color)
        : m_blend(blendWays().constLast())
        , m_color({qPremultiply(color.rgba()), static_cast<quint16>(255 - color.alpha())})
        , m_bytesPerLine(image->bytesPerLine())
        , m_firstLine(image->bits() + static_cast<qptrdiff>(part.top()) * m_bytesPerLine)
        , m_left(part.left())
        , m_columns(part.width())
    {
    }

    /// Blends over \a count pixels from the given one on; \a row and \a column count from the corner of the part.
    void blendRun(int row, int column, int count) const
    {
        quint32 *const pixels = pixelAt(row, column);
        for (int index = 0; index < count; ++index) {
            pixels[index] = blended(pixels[index], m_color);
        }
    }

    /// Blends over those of the 64 pixels from the given one on whose bit is set; bits beyond the part are ignored.
    void blendWord(int row, int column, quint64 covered) const
    {
        if (column + blendedPixels <= m_columns) {
            m_blend(pixelAt(row, column), covered, m_color);
            return;
        }
        quint32 *const pixels = pixelAt(row, column);
        for (int index = 0; column + index < m_columns; ++index) {
            if ((covered >> index & 1) != 0) {
                pixels[index] = blended(pixels[index], m_color);
            }
        }
    }

    /// Prefetches the pixels from the given one on, which is in the part: a steep curve touches other cache lines in
    /// every row, and a large image is not in the cache when it is blended.
    void expect(int row, int column) const
    {
#ifdef __GNUC__
        __builtin_prefetch(pixelAt(row, column), 1);
#else
        Q_UNUSED(row)
        Q_UNUSED(column)
#endif
    }

private:
    quint32 *pixelAt(int row, int column) const
    {
        return reinterpret_cast<quint32 *>(m_firstLine + static_cast<qptrdiff>(row) * m_bytesPerLine) + m_left + column;
    }

    BlendWay m_blend;
    BlendColor m_color;
    int m_bytesPerLine;
    uchar *m_firstLine; // of the part
    int m_left;
    int m_columns;
};
