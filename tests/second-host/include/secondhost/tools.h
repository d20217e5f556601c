#pragma once

#include "base.h"

#include <QColor>

class QAbstractButton;
class QWidget;

struct SECONDHOST_EXPORT BasicTools
{
    static void adjustLinearAxis(double &minimum, double &maximum, unsigned int &ticks);
    static QString intInsertDot(double value, int decimals);
    static void setButtonIconsColor(QAbstractButton *button, QColor normal, QColor active, QColor disabled);
    static QString iToHex(unsigned char value, int digits, QString prefix);
    static QString ExportPNG(QWidget *widget, QString name);
};

const QColor colorForIds[6] = {QColor(220, 20, 60, 195), QColor(255, 215, 0, 195), QColor(20, 150, 255, 195),
                               QColor(50, 205, 50, 195), QColor(Qt::cyan),         QColor(Qt::magenta)};
