#pragma once

#include "PlotterWindow.h"
#include "setup/Scene.h"

#include <QString>
#include <QStringList>

class QComboBox;
class QTableView;
class QWidget;

/**
 * Makes the choices of a scene in a container's own widgets, as a person would: by clicks and by picking entries.
 *
 * Runs no event loop while it does so: no timer of the container gets in between, and the same scene gives the same
 * points every time. GUI thread.
 */
class SceneRunner
{
public:
    /// \param container a shown container; not owned, used by apply() only
    explicit SceneRunner(QWidget *container);

    /// Makes all choices that can be made; returns the first of errors().
    QString apply(const SceneContainer &scene);

    /// One line for each choice of the last apply() that could not be made, and why; none when all were.
    QStringList errors() const;

private:
    void chooseCurve(int curve);
    void chooseSource(int curve, PlotterWindow::Side side, const SceneSource &source);
    bool chooseMotor(QComboBox *motors, const SceneSource &source);
    void chooseRow(QTableView *table, const SceneSource &source);
    void setCurveBoxes(const QList<SceneCurve> &curves);
    void setOption(PlotterWindow::Option option, bool isOn);
    void fail(const QString &problem);

    template<typename Widget> Widget *find(const QWidget *parent, const QString &name);

    QWidget *const m_container; // not owned
    QString m_place;            // "curve 2, Y: " while a source is chosen
    QStringList m_errors;
};
