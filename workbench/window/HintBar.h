#pragma once

#include <QFrame>

/**
 * A line above the workspace with the first steps for a newcomer, until it is closed once; the settings remember that.
 */
class HintBar : public QFrame
{
    Q_OBJECT

public:
    explicit HintBar(QWidget *parent = nullptr);

    /// Whether the hint was closed, now or in an earlier run.
    static bool wasClosed();

private:
    void closeForGood();
};
