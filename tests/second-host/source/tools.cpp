#include "secondhost/tools.h"

#include <QAbstractButton>
#include <QPixmap>
#include <QtMath>

Q_LOGGING_CATEGORY(debLowLevel, "secondhost.lowlevel", QtWarningMsg)

void BasicTools::adjustLinearAxis(double &minimum, double &maximum, unsigned int &ticks) {
    const double wanted = (maximum - minimum) / ticks;
    double step = qPow(10, qFloor(std::log10(wanted)));
    for (const double factor : {2.0, 2.5, 2.0}) {
        if (step < wanted) step *= factor;
    }
    minimum = qFloor(minimum / step) * step;
    maximum = qCeil(maximum / step) * step;
    ticks = qMax(1, qRound((maximum - minimum) / step));
}

QString BasicTools::intInsertDot(double value, int decimals) { return QString::number(value, 'f', decimals); }

void BasicTools::setButtonIconsColor(QAbstractButton *button, QColor normal, QColor, QColor) {
    QPixmap filled(button->iconSize());
    filled.fill(normal);
    button->setIcon(filled);
}

QString BasicTools::iToHex(unsigned char value, int digits, QString prefix) {
    return prefix + QString::number(value, 16).rightJustified(digits, QLatin1Char('0'));
}

QString BasicTools::ExportPNG(QWidget *widget, QString name) {
    name += QStringLiteral(".png");
    return widget->grab().save(name) ? name : QString();
}
