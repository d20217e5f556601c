#pragma once

#include <QProxyStyle>

class QPalette;

/// Whether windows of this palette are dark, so that what is drawn upon them has to be light.
bool isDark(const QPalette &palette);

/// Fusion with empty boxes, radio buttons and buttons of titles that can be seen on dark grounds, too.
class WorkbenchStyle : public QProxyStyle
{
    Q_OBJECT

public:
    WorkbenchStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
};

/**
 * The style sheet of the application: what containers build upon.
 *
 * It gives buttons a border, a radius and a padding. Containers square corners and drop borders with style sheets of
 * their own, so that buttons side by side become one bar; without a border to begin with they would have none at all.
 */
QString workbenchStyleSheet();
