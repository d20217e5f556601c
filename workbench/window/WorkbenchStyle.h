#pragma once

#include <QProxyStyle>

class QPalette;

/// Whether windows of this palette are dark, so that what is drawn upon them has to be light.
bool isDark(const QPalette &palette);

/**
 * Fusion with what can be seen on every ground of a palette: empty boxes and buttons of titles on dark ones, icons upon
 * a plate where their own colours do not stand out, icons of selected rows in the colour of selected text, and the
 * keyboard focus as an outline that leaves what is in it as it is.
 */
class WorkbenchStyle : public QProxyStyle
{
    Q_OBJECT

public:
    WorkbenchStyle();

    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption *option = nullptr,
                       const QWidget *widget = nullptr) const override;
    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const override;
};

/**
 * The style sheet of the application: what containers build upon.
 *
 * It gives buttons a border, a radius and a padding. Containers square corners and drop borders with style sheets of
 * their own, so that buttons side by side become one bar; without a border to begin with they would have none at all.
 */
QString workbenchStyleSheet();
