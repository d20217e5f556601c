#pragma once

#include "CoverageMask.h"
#include "PlotGeometry.h"
#include "PlotSettings.h"

#include <QButtonGroup>
#include <QMap>
#include <QPixmap>
#include <QPointF>
#include <QRect>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QPainter;
class QToolButton;

/**
 * A plot of X/Y curves over a grid, with a history of zoom levels.
 *
 * Grid and curves are drawn into an off-screen image. Every change of data, view or look marks the image as outdated
 * and calls update(). The next paint event (for the screen, grab() or render()) rebuilds the whole image, once for all
 * changes since the last one. Other paint events only copy the image: exposes and rubber bands are cheap, and a hidden
 * or minimised plot draws nothing.
 *
 * The widget floats its controls over its upper edge: a check box per curve and "Show all data" at the left, zoom
 * buttons and the options "line" and "as wide as high" at the right.
 *
 * Gestures: a drag with the left button zooms to the band; + and - step through the zoom levels; arrow keys and wheel
 * (with Control: horizontally) scroll by whole tick intervals, in the level shown.
 *
 * States: idle, or dragging from a left press in the press area until the left release. Both zoom buttons are hidden at
 * first: the first band shows the zoom-out button, the first step back the zoom-in button, and setPlotSettings() hides
 * both.
 *
 * The curve boxes have dynamic properties: "ColorName" (set here), and the names of the curve's sources for the legend,
 * which the owner sets and every redraw reads (see host/DynamicProperty.h). Toggling a box does not redraw: the next
 * redraw shows it, and new points cause one at every refresh.
 *
 * Owned by its parent widget. GUI thread.
 */
class Plotter : public QWidget
{
    Q_OBJECT

public:
    /// Makes the boxes of the curves 0 to \a curveCount - 1, the first one checked; \a curveCount is at least 1.
    explicit Plotter(int curveCount, QWidget *parent = nullptr);
    ~Plotter() override;

    /**
     * Makes \a settings the only zoom level, forgets all others and redraws.
     *
     * The ranges are shown as they are; PlotSettings::adjust() rounds them.
     */
    void setPlotSettings(const PlotSettings &settings);

    /// Stores \a points (data units, in the order of recording) as curve \a id in place of any other, and redraws.
    void setCurveData(int id, const QVector<QPointF> &points);

    /// Forgets curve \a id, if there is one, and redraws.
    void clearCurve(int id);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    void zoomIn();  ///< One level forward in the zoom history; nothing at its end.
    void zoomOut(); ///< One level back in the zoom history; nothing at its start.

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    const PlotSettings &currentSettings() const;
    PlotGeometry geometryOfPlot() const;
    bool isCurveShown(const QAbstractButton *button) const;

    QToolButton *createZoomButton(const QString &iconPath, const QString &text);
    QCheckBox *createOptionCheck(const QString &iconPath, const QString &text);
    void createCurveButton(int id);

    void scrollBy(int dx, int dy);
    void pushZoomLevel(const PlotSettings &settings);
    void updateRubberBandRegion();

    void refreshPixmap(); // marks the image as outdated
    void rebuildPixmap();
    void drawGrid(QPainter *painter);
    void drawLegend(QPainter *painter);
    void drawCurves(QPainter *painter); // which paints on a QImage

    QToolButton *zoomInButton = nullptr;
    QToolButton *zoomOutButton = nullptr;
    QCheckBox *lineModeCheck = nullptr;
    QCheckBox *aspectCheck = nullptr;

public:
    QCheckBox *showAllDataCheck = nullptr; ///< "Show all data": draws and lists unchecked curves, too.
    QButtonGroup curveButtons;             ///< The "Enable recording" boxes; the button id is the curve id.

private:
    QMap<int, QVector<QPointF>> curveMap; // data units by curve id
    QVector<PlotSettings> zoomStack;      // never empty, oldest first
    int curZoom = 0;                      // index of the level shown
    bool rubberBandIsShown = false;
    QRect rubberBandRect; // from the press to the mouse in widget pixels, not normalised
    QPixmap pixmap;       // the off-screen image
    bool pixmapIsOutdated = true;
    CoverageMask lineMask; // keeps its memory between redraws
};
