#include "Plotter.h"

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
constexpr int xLabelPixels = 100;
constexpr int titleGapPixels = 5; // between the entries of the legend
constexpr double titleBaselinePixels = 50.0;

/// Colours of the grid, taken anew at each redraw because the palette may change.
struct GridPens
{
    QPen quiteDark; // grid lines
    QPen light;     // the rest
};

/// Whether the colours of the image are others in a window that is not active.
bool dependsOnActivation(const QPalette &palette)
{
    const auto differs = [&palette](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role) != palette.color(QPalette::Inactive, role);
    };
    return differs(QPalette::Shadow) || differs(QPalette::Dark) || differs(QPalette::Light);
}

int widestLabel(const QFontMetrics &metrics, const QVector<GridTick> &ticks)
{
    int widest = 0;
    for (const GridTick &tick : ticks) {
        widest = qMax(widest, metrics.horizontalAdvance(tick.label));
    }
    return widest;
}

/// The font for the labels of one axis. A number that is cut reads as another number, so all are drawn smaller when
/// one is too wide for its space.
QFont labelFont(const QPainter &painter, const QVector<GridTick> &ticks, int spacePixels)
{
    QFont font = painter.font();
    int widest = widestLabel(painter.fontMetrics(), ticks);
    int sizePixels = QFontInfo(font).pixelSize();
    while (widest >= spacePixels && sizePixels > 1) { // the widget's edge is no part of a number either
        // Hinted letters are seldom as narrow as their size says: the first try may not be enough.
        sizePixels = qMax(1, qMin(sizePixels - 1, sizePixels * spacePixels / widest));
        font.setPixelSize(sizePixels);
        widest = widestLabel(QFontMetrics(font, painter.device()), ticks);
    }
    return font;
}

void drawHorizontalLines(QPainter *painter, const GridPens &pens, const PlotGeometry &geometry,
                         const PlotSettings &settings)
{
    constexpr int left = PlotGeometry::plotLeftPixels;
    const int right = truncated(left + geometry.plotWidth());
    const QVector<GridTick> ticks =
        gridTicks(settings.minY, settings.maxY, settings.numYTicks, geometry.plotBottom(), -geometry.plotHeight());
    const QFont fullFont = painter->font();
    painter->setFont(labelFont(*painter, ticks, left - tickPixels));
    for (const GridTick &tick : ticks) {
        const int y = tick.position;
        painter->setPen(pens.quiteDark);
        painter->drawLine(left, y, right, y);
        painter->setPen(pens.light);
        painter->drawLine(left - tickPixels, y, left, y);
        painter->drawText(QRect(0, y - 10, left - tickPixels, 20), Qt::AlignRight | Qt::AlignVCenter, tick.label);
    }
    painter->setFont(fullFont);
}

void drawVerticalLines(QPainter *painter, const GridPens &pens, const PlotGeometry &geometry,
                       const PlotSettings &settings)
{
    const int bottom = geometry.plotBottom();
    const QVector<GridTick> ticks =
        gridTicks(settings.minX, settings.maxX, settings.numXTicks, PlotGeometry::plotLeftPixels, geometry.plotWidth());
    const QFont fullFont = painter->font();
    painter->setFont(labelFont(*painter, ticks, xLabelPixels));
    for (const GridTick &tick : ticks) {
        const int x = tick.position;
        painter->setPen(pens.quiteDark);
        painter->drawLine(x, PlotGeometry::plotTopPixels, x, bottom);
        painter->setPen(pens.light);
        painter->drawLine(x, bottom, x, bottom + tickPixels);
        painter->drawText(QRect(x - xLabelPixels / 2, bottom + tickPixels, xLabelPixels, 15),
                          Qt::AlignHCenter | Qt::AlignTop, tick.label);
    }
    painter->setFont(fullFont);
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
    // An opaque image hides the widget's background: filling that first would cost as much as copying the image.
    setAttribute(Qt::WA_OpaquePaintEvent, palette().color(QPalette::Shadow).alpha() == 255);
    update();
}

void Plotter::rebuildPixmap()
{
    pixmapIsOutdated = false;
    const qreal ratio = devicePixelRatioF();
    // Darker than the background role (Mid): the plot lies in its frame like a screen.
    const QColor background = palette().color(QPalette::Shadow);
    const QSize size(qCeil(width() * ratio), qCeil(height() * ratio));
    const QImage::Format format =
        background.alpha() == 255 ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    // The old image's memory serves again: asking for fresh pages may cost more than all drawing.
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
    const GridPens pens = {palette().color(QPalette::Dark).lighter(gridLightFactor), palette().color(QPalette::Light)};
    drawHorizontalLines(painter, pens, geometry, currentSettings());
    drawVerticalLines(painter, pens, geometry, currentSettings());

    painter->setPen(pens.light);
    painter->drawRect(
        QRectF(PlotGeometry::plotLeftPixels, PlotGeometry::plotTopPixels, geometry.plotWidth(), geometry.plotHeight()));
    drawLegend(painter);
}

/// Y names run rightwards behind "Y:", X names leftwards before ":X".
void Plotter::drawLegend(QPainter *painter)
{
    const QFontMetrics metrics = painter->fontMetrics();
    const QString titleX = QStringLiteral(":X");
    const QString titleY = QStringLiteral("Y:");
    const int titleXLeft = truncated(width() - 1 - 2.5) - metrics.horizontalAdvance(titleX);
    const int titleXBaseline = truncated(geometryOfPlot().plotBottom() + 2.5 + 2 * metrics.height());
    painter->drawText(QPointF(2.0, titleBaselinePixels), titleY);
    painter->drawText(titleXLeft, titleXBaseline, titleX);

    int cursorY = truncated(metrics.horizontalAdvance(titleY) + 4.5);
    int cursorX = truncated(titleXLeft - 2.5);
    const QList<QAbstractButton *> buttons = curveButtons.buttons();
    for (QAbstractButton *const button : buttons) {
        if (!isCurveShown(button)) {
            continue;
        }
        const QString nameY = button->property(DynamicProperty::CaptureY).toString();
        const QString nameX = button->property(DynamicProperty::CaptureX).toString();
        cursorX -= metrics.horizontalAdvance(nameX);
        QColor color = curveColor(curveButtons.id(button));
        color.setAlpha(255); // thin letters would fade in the translucent colour of the curve
        painter->setPen(color);
        painter->drawText(QPointF(cursorY, titleBaselinePixels), nameY);
        painter->drawText(cursorX, titleXBaseline, nameX);
        cursorX -= titleGapPixels;
        cursorY += metrics.horizontalAdvance(nameY) + titleGapPixels;
    }
}

void Plotter::drawCurves(QPainter *painter)
{
    const PlotGeometry geometry = geometryOfPlot();
    if (!geometry.isDrawable()) {
        return;
    }
    const CurveCanvas canvas = {painter, static_cast<QImage *>(painter->device()), geometry.clipRectangle()};
    painter->setClipRect(canvas.clip);
    const PointMapping mapping = geometry.mapping(currentSettings());
    const QMap<int, QVector<QPointF>> curves = curveMap;
    for (auto curve = curves.cbegin(); curve != curves.cend(); ++curve) {
        if (isCurveShown(curveButtons.button(curve.key()))) {
            lastCurveBounds =
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
        // Windows become active more often than anything looks different for it.
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
    // No event reports another pixel ratio: a window that comes to another screen is only painted anew.
    if (pixmapIsOutdated || pixmap.devicePixelRatioF() != devicePixelRatioF()) {
        rebuildPixmap();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, pixmap);
    if (rubberBandIsShown) {
        painter.setPen(palette().color(QPalette::Light));
        // Outlines reach one pixel beyond their rectangle; this one shall cover the band's own pixels.
        painter.drawRect(rubberBandRect.normalized().adjusted(0, 0, -1, -1));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Dark);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}
