#include "CurveRaster.h"

#include "CoverageMask.h"
#include "RunBlender.h"

#include <QColor>
#include <QImage>
#include <QTransform>

#include <algorithm>
#include <cmath>

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#define CLEARS_WIDE_REGISTERS
#endif

namespace
{

#ifdef CLEARS_WIDE_REGISTERS
__attribute__((target("avx"))) void clearUpperHalves()
{
    _mm256_zeroupper();
}
#endif

/// Avoids the AVX-SSE transition penalty: dirty upper halves of the YMM registers, left by other code, slow down every
/// SSE instruction below (measured: more than 2x). vzeroupper clears them.
void clearWideRegisters()
{
#ifdef CLEARS_WIDE_REGISTERS
    if (__builtin_cpu_supports("avx")) {
        clearUpperHalves();
    }
#endif
}

constexpr double coordinateReachPixels = 1e300; // sums and differences of smaller coordinates do not overflow

/// A pen in device pixels, with positions from the upper left corner of its clip rectangle.
struct DevicePen
{
    explicit DevicePen(const RasterPen &pen)
        : scale(pen.image->devicePixelRatioF())
        , radius(pen.width / 2.0 * scale)
        , clip(QTransform::fromScale(scale, scale).mapRect(pen.clip) & pen.image->rect())
    {
    }

    QPointF map(const QPointF &point) const
    {
        return {point.x() * scale - clip.left(), point.y() * scale - clip.top()};
    }

    double scale;
    double radius;
    QRect clip;
};

bool isUsable(const QPointF &point)
{
    return std::abs(point.x()) <= coordinateReachPixels && std::abs(point.y()) <= coordinateReachPixels;
}

} // namespace

void CurveRaster::drawPolyline(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color,
                               CoverageMask *mask)
{
    const DevicePen devicePen(pen);
    if (devicePen.clip.isEmpty()) {
        return;
    }
    mask->reset(devicePen.clip.size(), devicePen.radius);
    clearWideRegisters();
    QPointF previous(qQNaN(), qQNaN());
    unsigned previousSides = 0;
    for (const QPointF &point : points) {
        const QPointF position = devicePen.map(point);
        const unsigned sides = mask->sidesBeyond(position);
        const bool isMove = position.x() != previous.x() || position.y() != previous.y();
        if ((sides & previousSides) == 0 && isMove && isUsable(position) && isUsable(previous)) {
            mask->addSegment(previous, position);
        }
        previous = position;
        previousSides = sides;
    }
    const RunBlender blend(pen.image, devicePen.clip, color);
    mask->visitWords([&blend](int row, int column, quint64 covered) { blend.blendWord(row, column, covered); },
                     [&blend](int row, int column) { blend.expect(row, column); });
}

void CurveRaster::drawDots(const RasterPen &pen, const QVector<QPointF> &points, const QColor &color)
{
    const DevicePen devicePen(pen);
    if (devicePen.clip.isEmpty()) {
        return;
    }
    const double radius = devicePen.radius;
    const int columns = devicePen.clip.width();
    const int rows = devicePen.clip.height();
    const RunBlender blend(pen.image, devicePen.clip, color);
    clearWideRegisters();
    // The first row or column, from 0 on, whose centre lies beyond an edge.
    const auto beyond = [](double edge) { return static_cast<int>(std::max(0.0, edge + 0.5)); };
    for (const QPointF &point : points) {
        const QPointF centre = devicePen.map(point);
        const bool isInReach =
            centre.x() > -radius && centre.x() < columns + radius && centre.y() > -radius && centre.y() < rows + radius;
        if (!isInReach) { // also false for NaN
            continue;
        }
        const int endRow = std::min(rows, beyond(centre.y() + radius));
        for (int row = beyond(centre.y() - radius); row < endRow; ++row) {
            const double below = row + 0.5 - centre.y();
            const double chord = std::sqrt(std::max(0.0, radius * radius - below * below));
            const int first = beyond(centre.x() - chord);
            blend.blendRun(row, first, std::min(columns, beyond(centre.x() + chord)) - first);
        }
    }
}
