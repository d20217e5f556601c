#include "Plotter.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>
#include <QWheelEvent>

namespace
{

constexpr int controlsTopPixels = 7;
constexpr int controlsLeftPixels = 10;
constexpr int controlsGapPixels = 5; // between controls, and to the right edge
constexpr int minimumBandPixels = 4;
constexpr int wheelNotch = 120; // eighths of a degree

} // namespace

void Plotter::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !geometryOfPlot().pressArea().contains(event->pos())) {
        return;
    }
    rubberBandIsShown = true;
    rubberBandRect = QRect(event->pos(), event->pos());
    updateRubberBandRegion();
    setCursor(Qt::CrossCursor);
}

void Plotter::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !rubberBandIsShown) {
        return;
    }
    rubberBandIsShown = false;
    updateRubberBandRegion();
    unsetCursor();

    const QRect band = rubberBandRect.normalized();
    if (band.width() < minimumBandPixels || band.height() < minimumBandPixels) {
        return; // a click, or an accidental move
    }
    PlotSettings settings = geometryOfPlot().zoomed(currentSettings(), band);
    settings.adjust();
    pushZoomLevel(settings);
}

void Plotter::mouseMoveEvent(QMouseEvent *event)
{
    if (!rubberBandIsShown) {
        return;
    }
    updateRubberBandRegion();
    rubberBandRect.setBottomRight(event->pos());
    updateRubberBandRegion();
}

/// Repaints only the four sides of the band.
void Plotter::updateRubberBandRegion()
{
    const QRect band = rubberBandRect.normalized();
    update(band.left(), band.top(), band.width(), 1);
    update(band.left(), band.top(), 1, band.height());
    update(band.left(), band.bottom(), band.width(), 1);
    update(band.right(), band.top(), 1, band.height());
}

void Plotter::wheelEvent(QWheelEvent *event)
{
    // delta(), although deprecated: it is the same for horizontal and vertical wheels, so that only Control chooses the
    // axis.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    const int steps = event->delta() / wheelNotch;
    QT_WARNING_POP

    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        scrollBy(steps, 0);
    } else {
        scrollBy(0, steps);
    }
    QWidget::wheelEvent(event); // ignores the event, so that an enclosing scroll area scrolls, too
}

void Plotter::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
        zoomIn();
        break;
    case Qt::Key_Minus:
        zoomOut();
        break;
    case Qt::Key_Left:
        scrollBy(-1, 0);
        break;
    case Qt::Key_Right:
        scrollBy(1, 0);
        break;
    case Qt::Key_Up:
        scrollBy(0, 1);
        break;
    case Qt::Key_Down:
        scrollBy(0, -1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Plotter::scrollBy(int dx, int dy)
{
    zoomStack[curZoom].scroll(dx, dy); // other zoom levels keep their ranges
    refreshPixmap();                   // even for less than a wheel notch, so that toggled options take effect
}

void Plotter::resizeEvent(QResizeEvent *event)
{
    Q_UNUSED(event)
    int x = controlsLeftPixels;
    const QList<QAbstractButton *> buttons = curveButtons.buttons();
    for (QAbstractButton *const button : buttons) {
        button->adjustSize();
        button->move(x, controlsTopPixels);
        x += button->width() + controlsGapPixels;
        button->raise();
    }
    showAllDataCheck->adjustSize();
    showAllDataCheck->move(x, controlsTopPixels);

    // Hidden zoom buttons keep their places, so that nothing jumps when they are shown.
    const QList<QWidget *> rightControls = {zoomInButton, zoomOutButton, lineModeCheck, aspectCheck};
    x = width();
    for (QWidget *const control : rightControls) {
        control->adjustSize();
        x -= control->width() + controlsGapPixels;
    }
    for (QWidget *const control : rightControls) {
        control->move(x, controlsTopPixels);
        x += control->width() + controlsGapPixels;
    }
    refreshPixmap();
}
