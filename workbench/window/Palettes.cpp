#include "window/Palettes.h"

#include "window/Contrast.h"
#include "window/WorkbenchStyle.h"

#include <QApplication>
#include <QMap>
#include <QPalette>
#include <QStyle>

namespace
{

/// Darker than any window: the darkest of the curves' colours, in which their names are written, still stands out upon it.
QColor plotGround()
{
    return {10, 11, 12};
}

/// \a palette, made for light windows, with colours that plots can be read in.
QPalette withPlotColors(QPalette palette)
{
    // Plots draw labels in Light and curve colours upon Shadow, with a grid of lightened Dark: on the style's own
    // middle grey neither can be read. Light stays off white, for a curve's number is drawn in it on windows too.
    palette.setColor(QPalette::Shadow, plotGround());
    palette.setColor(QPalette::Dark, QColor(58, 62, 66));
    palette.setColor(QPalette::Light, QColor(186, 190, 196));
    return palette;
}

/// \a palette with a selection that is dark enough for the text upon it.
QPalette withReadableSelection(QPalette palette)
{
    constexpr int step = 104; // percent
    QColor selection = palette.color(QPalette::Highlight);
    const QColor text = palette.color(QPalette::HighlightedText);
    for (int i = 0; i < step && Contrast::ratio(text, selection) < Contrast::minimumForText; ++i) {
        selection = selection.darker(step);
    }
    palette.setColor(QPalette::Active, QPalette::Highlight, selection);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, selection);
    return palette;
}

QPalette darkPalette()
{
    const QColor window(43, 44, 46);
    const QColor text(228, 228, 228);
    const QColor faded(128, 128, 128);
    const QColor accent(56, 118, 198); // between the window and the white text upon it

    QPalette palette(QColor(54, 56, 59), window);
    // Lighter than window and plot, for the empty boxes of check boxes are drawn in it upon both.
    palette.setColor(QPalette::Base, QColor(62, 64, 68));
    palette.setColor(QPalette::AlternateBase, QColor(54, 56, 60));
    palette.setColor(QPalette::ToolTipBase, QColor(58, 60, 63));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::Link, QColor(120, 180, 250));
    palette.setColor(QPalette::LinkVisited, QColor(160, 175, 250));
    palette.setColor(QPalette::BrightText, Qt::white);
    // Plots draw their labels in Light upon Shadow, with a grid of lightened Dark: these three need distance.
    palette.setColor(QPalette::Light, QColor(190, 190, 190));
    palette.setColor(QPalette::Midlight, QColor(84, 86, 90));
    palette.setColor(QPalette::Mid, QColor(52, 54, 56));
    palette.setColor(QPalette::Dark, QColor(46, 47, 50));
    palette.setColor(QPalette::Shadow, plotGround());
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                           QPalette::ToolTipText, QPalette::HighlightedText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, faded);
    }
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faded);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(80, 82, 86));
    return palette;
}

/// What the application looks like where nothing was chosen.
struct SystemLook
{
    QString style = QApplication::style()->objectName();
    QPalette palette = QApplication::palette();
};

/// As it was at the first call.
const SystemLook &systemLook()
{
    static const SystemLook look;
    return look;
}

PaletteChoice &appliedPalette()
{
    static PaletteChoice choice = PaletteChoice::System;
    return choice;
}

const QMap<QString, PaletteChoice> &paletteNames()
{
    static const QMap<QString, PaletteChoice> names = {{QStringLiteral("system"), PaletteChoice::System},
                                                       {QStringLiteral("light"), PaletteChoice::Light},
                                                       {QStringLiteral("dark"), PaletteChoice::Dark}};
    return names;
}

} // namespace

std::optional<PaletteChoice> paletteChoice(const QString &name)
{
    return paletteNames().contains(name) ? std::make_optional(paletteNames().value(name)) : std::nullopt;
}

QString paletteName(PaletteChoice choice)
{
    return paletteNames().key(choice);
}

void applyPalette(PaletteChoice choice)
{
    const SystemLook &look = systemLook();
    if (choice != PaletteChoice::System) {
        QApplication::setStyle(new WorkbenchStyle);
        QApplication::setPalette(choice == PaletteChoice::Dark
                                     ? darkPalette()
                                     : withPlotColors(withReadableSelection(QApplication::style()->standardPalette())));
    } else {
        if (appliedPalette() != PaletteChoice::System) {
            QApplication::setStyle(look.style);
        }
        QApplication::setPalette(isDark(look.palette) ? look.palette : withPlotColors(look.palette));
    }
    appliedPalette() = choice;
    qApp->setStyleSheet(workbenchStyleSheet());
}

PaletteChoice currentPalette()
{
    return appliedPalette();
}
