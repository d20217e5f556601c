#include "window/WorkbenchStyle.h"

#include "window/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QStyleOption>
#include <QWidget>

// Outside of any namespace, as the resource compiler's functions are.
static void initStyleResources()
{
    Q_INIT_RESOURCE(style); // a static library's resources are not linked in unless they are initialised
}

namespace
{

/// Where a widget's parent paints its own ground, as plots do, it is Shadow.
QColor groundOf(const QStyleOption &option, const QWidget *widget)
{
    const QWidget *const parent = widget == nullptr ? nullptr : widget->parentWidget();
    const bool isOnPlot = parent != nullptr && parent->testAttribute(Qt::WA_OpaquePaintEvent);
    return option.palette.color(isOnPlot            ? QPalette::Shadow
                                : widget == nullptr ? QPalette::Window
                                                    : widget->backgroundRole());
}

/// \a icon as it is, or in front of a plate of the palette's colours when too little of it could be seen on \a ground.
QIcon platedIcon(const QIcon &icon, const QSize &size, const QPalette &palette, const QColor &ground, qreal ratio)
{
    constexpr double enough = 0.3; // of its pixels: shapes of several colours keep their look
    const QString key =
        QStringLiteral("plated/%1/%2/%3/%4").arg(icon.cacheKey()).arg(size.width()).arg(ground.rgba()).arg(ratio);
    QPixmap plated;
    if (QPixmapCache::find(key, &plated)) {
        return plated.isNull() ? icon : QIcon(plated);
    }
    const QPixmap plain = icon.pixmap(size * ratio);
    const QImage image = plain.toImage();
    if (Contrast::visiblePart(image, ground) < enough) {
        QColor plate = ground;
        double best = 0.0;
        for (const QPalette::ColorRole role : {QPalette::Shadow, QPalette::Light, QPalette::WindowText, QPalette::BrightText}) {
            const double visible = Contrast::visiblePart(image, palette.color(role));
            if (visible > best) {
                best = visible;
                plate = palette.color(role);
            }
        }
        plated = QPixmap(plain.size());
        plated.fill(Qt::transparent);
        QPainter painter(&plated);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(plate);
        const qreal radius = plated.width() / 5.0;
        painter.drawRoundedRect(plated.rect(), radius, radius);
        QPixmap copy = plain;
        copy.setDevicePixelRatio(1.0);
        painter.drawPixmap(0, 0, copy);
        painter.end();
        plated.setDevicePixelRatio(ratio);
    }
    QPixmapCache::insert(key, plated);
    return plated.isNull() ? icon : QIcon(plated);
}

qreal pixelRatio(const QWidget *widget)
{
    return widget == nullptr ? qApp->devicePixelRatio() : widget->devicePixelRatioF();
}

void drawFocusOutline(const QStyleOption &option, QPainter *painter)
{
    constexpr int width = 2; // widget pixels
    if ((option.state & QStyle::State_KeyboardFocusChange) == 0) {
        return; // as Fusion does: those who use the mouse see where they are
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    QPen pen(option.palette.color(QPalette::Highlight), width);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
    painter->restore();
}

} // namespace

bool isDark(const QPalette &palette)
{
    constexpr int middleLightness = 127; // of 255
    return palette.color(QPalette::Window).lightness() <= middleLightness;
}

WorkbenchStyle::WorkbenchStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void WorkbenchStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const
{
    const auto *const button = qstyleoption_cast<const QStyleOptionButton *>(option);
    const bool isLabel = element == CE_CheckBoxLabel || element == CE_RadioButtonLabel;
    if (!isLabel || button == nullptr || button->icon.isNull()) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionButton plated(*button);
    plated.icon =
        platedIcon(button->icon, button->iconSize, button->palette, groundOf(*option, widget), pixelRatio(widget));
    QProxyStyle::drawControl(element, &plated, painter, widget);
}

void WorkbenchStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                        const QWidget *widget) const
{
    const auto *const title = qstyleoption_cast<const QStyleOptionTitleBar *>(option);
    if (control != CC_TitleBar || title == nullptr || title->icon.isNull()) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    const bool isActive = (title->titleBarState & Qt::WindowActive) != 0;
    const QColor ground = title->palette.color(isActive ? QPalette::Highlight : QPalette::Window);
    QStyleOptionTitleBar plated(*title);
    const int side = pixelMetric(PM_SmallIconSize, option, widget);
    plated.icon = platedIcon(title->icon, QSize(side, side), title->palette, ground, pixelRatio(widget));
    QProxyStyle::drawComplexControl(control, &plated, painter, widget);
}

QPixmap WorkbenchStyle::generatedIconPixmap(QIcon::Mode mode, const QPixmap &pixmap, const QStyleOption *option) const
{
    if (mode != QIcon::Selected) {
        return QProxyStyle::generatedIconPixmap(mode, pixmap, option);
    }
    // The style's own is tinted with the colour of the selection, so that it vanishes in it.
    QPixmap silhouette(pixmap);
    QPainter painter(&silhouette);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(silhouette.rect(), QApplication::palette().color(QPalette::HighlightedText));
    return silhouette;
}

void WorkbenchStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                   const QWidget *widget) const
{
    if (element == PE_FrameFocusRect && option != nullptr) {
        drawFocusOutline(*option, painter);
        return;
    }
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
                          "QPushButton:focus { border: 2px solid palette(highlight); padding: 2px; }"
                          "QComboBox { border: 1px solid palette(mid); padding: 1px 4px; min-height: 1.4em; }"
                          "QComboBox::drop-down { border: none; width: 18px; }"
                          "QComboBox::down-arrow { image: url(:/style/arrow-down.svg); }"
                          "QComboBox:focus { border: 2px solid palette(highlight); padding: 0px 3px; }");
}
