#pragma once

#include "ScriptedCurve.h"

/// The plugin with four curves that follow samples of one kind, in a window of its own.
class FullPlugin : public ScriptedCurve
{
    Q_OBJECT

public:
    static constexpr int curveCount = 4;
    static constexpr int fullCurvePoints = 10000;

    /// Fills the curves with \a pointCount of their full number of points; timers fire only by calls, see setFree().
    FullPlugin(ContainerInterface *root, int kind, const QSize &windowSize, int pointCount = fullCurvePoints);

    /// A sampling tick with the present points.
    void tick();
    /// A sampling tick with new points.
    void tickAnew();
    /// A refresh tick and the paint event that follows.
    void refreshAndPaint();
    /// One change of what the plot shows and the paint event that follows.
    void redrawAndPaint();

    /// Lets the plugin's own timers fire, or holds them back; each sampling tick then takes the next points.
    void setFree(bool isFree);
    bool eventFilter(QObject *watched, QEvent *event) override;

    double channelMs() const;
    /// Switches the log on; false when that fails.
    bool startLogOf(const QString &path) const;

    int sampleTimerId() const;

    std::function<void()> onSample = [] {}; ///< called before every free sampling tick

private:
    void takeNext();

    QVector<QVector<QPointF>> m_curves;
    QVector<QPointF> m_points;
    int m_next = 0;
    int m_request = 0;
    bool m_isFree = false;
    int m_sampleTimer = 0;
};
