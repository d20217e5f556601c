// Functions and colours that plugins share.
#pragma once

#include <QColor>
#include <QList>

#include "secondhost/constants.hpp"

class QAbstractButton;
class QWidget;

class SECONDHOST_API BasicTools {
 public:
  static void adjustLinearAxis(double& low, double& high, unsigned int& ticks);
  static QString intInsertDot(double value, int decimals);
  static void setButtonIconsColor(QAbstractButton* button, QColor normal,
                                  QColor active, QColor disabled);
  static QString iToHex(unsigned char value, int digits, QString prefix);
  static QString ExportPNG(QWidget* widget, QString name);
};

SECONDHOST_API extern QList<QColor> colorForIds;
