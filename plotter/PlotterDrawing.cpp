#include "Plotter.h"

#include "AxisLines.h"
#include "CurveDrawing.h"
#include "GridTicks.h"

#include "host/DynamicProperty.h"

#include <QCheckBox>
#include <QEvent>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QtMath>

#include <utility>

namespace
{

constexpr int gridLightFactor = 150;
constexpr int tickPixels = 5;
constexpr int xLabelWidthPixels = 100;
constexpr int xLabelHeightPixels = 15;
constexpr int yLabelHeightPixels = 20;
constexpr int entryGapPixels = 5; // between the entries of the legend
constexpr double titleBaselinePixels = 50.0;
constexpr double titleAscentPixels = 19.0;  // from there to the icons of the controls
constexpr double titleDescentPixels = 10.0; // and to the frame
constexpr double legendGapPixels = 2.5;
constexpr double belowPlotPixels = 41.0;
constexpr QLatin1String titleX(":X", 2);
constexpr QLatin1String titleY("Y:", 2);

/// Colours of the grid.
struct GridColors
{
    QColor quiteDark; // grid lines
    QColor light;     // the rest
};

/// Whether the image has other colours in an inactive window.
bool dependsOnActivation(const QPalette &palette)
{
    const auto differs = [&palette](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role) != palette.color(QPalette::Inactive, role);
    };
    return differs(QPalette::Shadow) || differs(QPalette::Dark) || differs(QPalette::Light);
}

/**
 * The painter's font, or the largest smaller one whose text fits.
 *
 * \param shareOfPlace the size of the text, in a font with the given metrics, as a fraction of the space; it fits up to
 *                     1
 */
template<typename Share> QFont fittingFont(const QPainter &painter, Share shareOfPlace)
{
    QFont font = painter.font();
    int sizePixels = QFontInfo(font).pixelSize();
    double share = shareOfPlace(painter.fontMetrics());
    while (share > 1.0 && sizePixels > 1) {
        // Hinting changes the size of letters: starts a bit above the size that should fit.
        sizePixels = qMax(1, qMin(sizePixels - 1, static_cast<int>(sizePixels / share) + 1));
        font.setPixelSize(sizePixels);
        share = shareOfPlace(QFontMetrics(font, painter.device()));
    }
    return font;
}

/// The font for the labels of one axis: when one is too large for its \a place, all are drawn smaller, because a number
/// that is cut off is misread.
QFont labelFont(const QPainter &painter, const QVector<GridTick> &ticks, const QSize &place)
{
    return fittingFont(painter, [&](const QFontMetrics &metrics) {
        int width = 0;
        int belowBaseline = 0;
        for (const GridTick &tick : ticks) {
            width = qMax(width, metrics.horizontalAdvance(tick.label));
            if (metrics.height() > place.height()) { // may still fit: digits have no descent
                belowBaseline = qMax(belowBaseline, metrics.tightBoundingRect(tick.label).bottom() + 1);
            }
        }
        const int height = qMin(metrics.height(), metrics.ascent() + belowBaseline);
        // One pixel less than the place, which begins at the widget's edge.
        return qMax((width + 1.0) / place.width(), static_cast<double>(height) / place.height());
    });
}

/// The height of the legend as a fraction of the space between controls and frame, or of the space below the plot area,
/// where its baseline is two line heights down: the larger one.
double legendHeightShare(const QFontMetrics &metrics)
{
    return qMax(qMax(metrics.ascent() / titleAscentPixels, metrics.descent() / titleDescentPixels),
                (2 * metrics.height() + metrics.descent()) / (belowPlotPixels - legendGapPixels));
}

void drawHorizontalLines(QPainter *painter, const GridColors &colors, const PlotGeometry &geometry,
                         const PlotSettings &settings)
{
    constexpr int left = PlotGeometry::plotLeftPixels;
    const QSize labelSize(left - tickPixels, yLabelHeightPixels);
    const int right = truncated(left + geometry.plotWidth());
    const QVector<GridTick> ticks =
        gridTicks(settings.minY, settings.maxY, settings.numYTicks, geometry.plotBottom(), -geometry.plotHeight());
    const AxisLines lines(painter);
    const QFont fullFont = painter->font();
    painter->setFont(labelFont(*painter, ticks, labelSize));
    painter->setPen(colors.light);
    for (const GridTick &tick : ticks) {
        const int y = tick.position;
        lines.drawHorizontal(left, right, y, colors.quiteDark);
        lines.drawHorizontal(left - tickPixels, left, y, colors.light);
        painter->drawText(QRect(QPoint(0, y - yLabelHeightPixels / 2), labelSize), Qt::AlignRight | Qt::AlignVCenter,
                          tick.label);
    }
    painter->setFont(fullFont);
}

void drawVerticalLines(QPainter *painter, const GridColors &colors, const PlotGeometry &geometry,
                       const PlotSettings &settings)
{
    const QSize labelSize(xLabelWidthPixels, xLabelHeightPixels);
    const int bottom = geometry.plotBottom();
    const QVector<GridTick> ticks =
        gridTicks(settings.minX, settings.maxX, settings.numXTicks, PlotGeometry::plotLeftPixels, geometry.plotWidth());
    const AxisLines lines(painter);
    const QFont fullFont = painter->font();
    painter->setFont(labelFont(*painter, ticks, labelSize));
    painter->setPen(colors.light);
    for (const GridTick &tick : ticks) {
        const int x = tick.position;
        lines.drawVertical(x, PlotGeometry::plotTopPixels, bottom, colors.quiteDark);
        lines.drawVertical(x, bottom, bottom + tickPixels, colors.light);
        painter->drawText(QRect(QPoint(x - xLabelWidthPixels / 2, bottom + tickPixels), labelSize),
                          Qt::AlignHCenter | Qt::AlignTop, tick.label);
    }
    painter->setFont(fullFont);
}

void drawFrame(QPainter *painter, const QColor &color, const PlotGeometry &geometry)
{
    constexpr int left = PlotGeometry::plotLeftPixels;
    constexpr int top = PlotGeometry::plotTopPixels;
    const int right = truncated(left + geometry.plotWidth());
    const int bottom = geometry.plotBottom();
    AxisLines(painter).drawFrame(left, top, right, bottom, color);
}

} // namespace

QSize Plotter::sizeHint() const
{
    return {600, 400};
}

QSize Plotter::minimumSizeHint() const
{
    return {300, 200};
}

void Plotter::refreshPixmap()
{
    pixmapIsOutdated = true;
    // An opaque image covers the widget's background, which need not be filled first.
    setAttribute(Qt::WA_OpaquePaintEvent, palette().color(QPalette::Shadow).alpha() == 255);
    update();
}

void Plotter::rebuildPixmap()
{
    pixmapIsOutdated = false;
    const qreal ratio = devicePixelRatioF();
    // Darker than the background role (Mid), so that the plot stands out.
    const QColor background = palette().color(QPalette::Shadow);
    const QSize size(qCeil(width() * ratio), qCeil(height() * ratio));
    const QImage::Format format =
        background.alpha() == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    // Reuses the memory of the old image: allocating new pages may take longer than all drawing.
    QImage image = pixmap.toImage();
    pixmap = QPixmap();
    if (image.size() != size || image.format() != format) {
        image = QImage(size, format);
    }
    image.setDevicePixelRatio(ratio);
    image.fill(background);
    if (!image.isNull()) {
        QPainter painter(&image);
        painter.setPen(palette().color(foregroundRole()));
        painter.setBackground(palette().brush(backgroundRole()));
        painter.setFont(font());
        drawGrid(&painter);
        drawCurves(&painter);
    }
    pixmap = QPixmap::fromImage(std::move(image));
}

void Plotter::drawGrid(QPainter *painter)
{
    const PlotGeometry geometry = geometryOfPlot();
    if (!geometry.isDrawable()) {
        return;
    }
    const GridColors colors = {palette().color(QPalette::Dark).lighter(gridLightFactor),
                               palette().color(QPalette::Light)};
    drawHorizontalLines(painter, colors, geometry, currentSettings());
    drawVerticalLines(painter, colors, geometry, currentSettings());
    drawFrame(painter, colors.light, geometry);
    painter->setPen(colors.light);
    drawLegend(painter);
}

/// The Y names follow "Y:" to the right, the X names precede ":X" to the left.
void Plotter::drawLegend(QPainter *painter)
{
    painter->setFont(fittingFont(*painter, legendHeightShare));
    const QFontMetrics metrics = painter->fontMetrics();
    const int titleXLeft = truncated(width() - 1 - legendGapPixels) - metrics.horizontalAdvance(titleX);
    const int titleXBaseline = truncated(geometryOfPlot().plotBottom() + legendGapPixels + 2 * metrics.height());
    painter->drawText(QPointF(2.0, titleBaselinePixels), titleY);
    painter->drawText(titleXLeft, titleXBaseline, titleX);

    int cursorY = truncated(metrics.horizontalAdvance(titleY) + 4.5);
    int cursorX = truncated(titleXLeft - legendGapPixels);
    const QList<QAbstractButton *> buttons = curveButtons.buttons();
    for (QAbstractButton *const button : buttons) {
        if (!isCurveShown(button)) {
            continue;
        }
        const QString nameY = button->property(DynamicProperty::CaptureY).toString();
        const QString nameX = button->property(DynamicProperty::CaptureX).toString();
        cursorX -= metrics.horizontalAdvance(nameX);
        QColor color = curveColor(curveButtons.id(button));
        color.setAlpha(255); // thin translucent letters are hard to read
        painter->setPen(color);
        painter->drawText(QPointF(cursorY, titleBaselinePixels), nameY);
        painter->drawText(cursorX, titleXBaseline, nameX);
        cursorX -= entryGapPixels;
        cursorY += metrics.horizontalAdvance(nameY) + entryGapPixels;
    }
}

void Plotter::drawCurves(QPainter *painter)
{
    const PlotGeometry geometry = geometryOfPlot();
    if (!geometry.isDrawable()) {
        return;
    }
    const CurveCanvas canvas = {painter, static_cast<QImage *>(painter->device()), geometry.clipRectangle(), &lineMask};
    painter->setClipRect(canvas.clip);
    const PointMapping mapping = geometry.mapping(currentSettings());
    const QMap<int, QVector<QPointF>> curves = curveMap;
    for (auto curve = curves.cbegin(); curve != curves.cend(); ++curve) {
        if (isCurveShown(curveButtons.button(curve.key()))) {
            drawCurve(canvas, mapping, curve.value(), {curveColor(curve.key()), lineModeCheck->isChecked()});
        }
    }
}

void Plotter::changeEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::EnabledChange:
        refreshPixmap();
        break;
    case QEvent::ActivationChange:
        // With most palettes an inactive window looks the same.
        if (dependsOnActivation(palette())) {
            refreshPixmap();
        }
        break;
    default:
        break;
    }
    QWidget::changeEvent(event);
}

void Plotter::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    // No event reports a change of the pixel ratio: a window on another screen only gets a paint event.
    if (pixmapIsOutdated || pixmap.devicePixelRatioF() != devicePixelRatioF()) {
        rebuildPixmap();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, pixmap);
    if (rubberBandIsShown) {
        painter.setPen(palette().color(QPalette::Light));
        // QPainter::drawRect() draws one pixel beyond the rectangle at the right and at the bottom.
        painter.drawRect(rubberBandRect.normalized().adjusted(0, 0, -1, -1));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Dark);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}
