#pragma once

#include "PlotterWindow.h"
#include "setup/Scene.h"

#include <QString>

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

    /// Makes all choices; returns an empty text, or one line that says what could not be chosen and why.
    QString apply(const Scene &scene);

private:
    void chooseCurve(int curve);
    void chooseSource(int curve, PlotterWindow::Side side, const SceneSource &source);
    void chooseMotor(QComboBox *motors, const SceneSource &source);
    void chooseRow(QTableView *table, const SceneSource &source);
    void setCurvesRecorded(int count);
    void setOption(PlotterWindow::Option option, bool isOn);
    void fail(const QString &problem);

    template<typename Widget> Widget *find(const QWidget *parent, const QString &name);

    QWidget *const m_container; // not owned
    QString m_error;
};
