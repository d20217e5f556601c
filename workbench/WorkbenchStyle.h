#pragma once

#include <QProxyStyle>

/// Fusion with boxes and radio buttons that can be seen when they are empty, on dark grounds too.
class WorkbenchStyle : public QProxyStyle
{
    Q_OBJECT

public:
    WorkbenchStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};

/**
 * The style sheet of the application: what containers build upon.
 *
 * It gives buttons a border, a radius and a padding. Containers square corners and drop borders with style sheets of
 * their own, so that buttons side by side become one bar; without a border to begin with they would have none at all.
 */
QString workbenchStyleSheet();
