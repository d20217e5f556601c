#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

/**
 * Blends one colour over runs of pixels in a part of an image, rounding as Qt's painter does.
 *
 * A plain value that must not outlive the image.
 */
class RunBlender
{
public:
    /// \param image 32 bits per pixel, opaque or premultiplied; not owned
    /// \param part  within the image, device pixels
    RunBlender(QImage *image, const QRect &part, const QColor &color)
        : m_source(qPremultiply(color.rgba()))
        , m_kept(255U - static_cast<unsigned>(color.alpha()))
        , m_bytesPerLine(image->bytesPerLine())
        , m_firstLine(image->bits() + static_cast<qptrdiff>(part.top()) * m_bytesPerLine)
        , m_left(part.left())
    {
    }

    /// Blends over \a count pixels from the given one on, which is counted from the corner of the part.
    void operator()(int row, int column, int count) const
    {
        auto *const pixels =
            reinterpret_cast<QRgb *>(m_firstLine + static_cast<qptrdiff>(row) * m_bytesPerLine) + m_left + column;
        for (int index = 0; index < count; ++index) {
            pixels[index] = m_source + faded(pixels[index]);
        }
    }

    /// Has the pixels from the given one on, which is in the part, brought into the cache: a steep curve meets another
    /// line of it in every row, and large images do not stay there from filling to blending.
    void expect(int row, int column) const
    {
#ifdef __GNUC__
        __builtin_prefetch(m_firstLine + static_cast<qptrdiff>(row) * m_bytesPerLine +
                               (m_left + column) * static_cast<qptrdiff>(sizeof(QRgb)),
                           1);
#else
        Q_UNUSED(row)
        Q_UNUSED(column)
#endif
    }

private:
    /// All four channels of \a pixel times m_kept / 255, each in 16 bits of its own meanwhile.
    QRgb faded(QRgb pixel) const
    {
        constexpr quint64 channels = 0x00ff00ff00ff00ff;
        constexpr quint64 halves = 0x0080008000800080;
        quint64 wide = ((static_cast<quint64>(pixel) << 24 | pixel) & channels) * m_kept;
        wide = ((wide + ((wide >> 8) & channels) + halves) >> 8) & channels;
        return static_cast<QRgb>(wide >> 24 | wide);
    }

    QRgb m_source;
    quint64 m_kept; // of 255
    int m_bytesPerLine;
    uchar *m_firstLine; // of the part
    int m_left;
};
