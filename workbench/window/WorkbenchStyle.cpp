#include "window/WorkbenchStyle.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyleOption>

// Outside of any namespace, as the resource compiler's functions are.
static void initStyleResources()
{
    Q_INIT_RESOURCE(style); // a static library's resources are not linked in unless they are initialised
}

bool isDark(const QPalette &palette)
{
    constexpr int middleLightness = 127; // of 255
    return palette.color(QPalette::Window).lightness() <= middleLightness;
}

WorkbenchStyle::WorkbenchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void WorkbenchStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                   const QWidget *widget) const
{
    const bool isIndicator = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const bool isButtonOption = qstyleoption_cast<const QStyleOptionButton *>(option) != nullptr;
    if (!isIndicator || !isButtonOption || !isDark(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    // The outline is drawn in darkened Window, which cannot be seen on a dark ground.
    QStyleOptionButton lightened(*qstyleoption_cast<const QStyleOptionButton *>(option));
    lightened.palette.setColor(QPalette::Window, lightened.palette.color(QPalette::WindowText));
    QProxyStyle::drawPrimitive(element, &lightened, painter, widget);
}

QIcon WorkbenchStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption *option, const QWidget *widget) const
{
    constexpr int sidePixels = 16;
    QIcon icon = QProxyStyle::standardIcon(standardIcon, option, widget);
    const bool isOfTitle =
        standardIcon >= SP_TitleBarMinButton && standardIcon <= SP_TitleBarContextHelpButton; // all are outlines
    const QPalette palette = QApplication::palette();
    if (!isOfTitle || !isDark(palette)) {
        return icon;
    }
    // The style has them in black only.
    QPixmap pixmap = icon.pixmap(sidePixels, sidePixels);
    if (!pixmap.isNull()) {
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), palette.color(QPalette::WindowText));
    }
    return pixmap;
}

QString workbenchStyleSheet()
{
    initStyleResources();
    return QStringLiteral("QPushButton { border: 1px solid palette(mid); border-radius: 5px; padding: 3px;"
                          " background-color: palette(button); }"
                          "QPushButton:hover { background-color: palette(midlight); }"
                          "QPushButton:pressed, QPushButton:checked { background-color: palette(mid); }"
                          "QPushButton:focus { border-color: palette(highlight); }"
                          "QComboBox { border: 1px solid palette(mid); padding: 1px 4px; min-height: 1.4em; }"
                          "QComboBox::drop-down { border: none; width: 18px; }"
                          "QComboBox::down-arrow { image: url(:/style/arrow-down.svg); }"
                          "QComboBox:focus { border-color: palette(highlight); }");
}
