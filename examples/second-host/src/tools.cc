#include "secondhost/tools.hpp"

#include <QAbstractButton>
#include <QPixmap>
#include <cmath>

QLoggingCategory& debLowLevel() {
  static QLoggingCategory category("secondhost.lowlevel", QtWarningMsg);
  return category;
}

const char* DynamicProperty::ShowOnToolbar = "dpShowOnToolbar";
const char* DynamicProperty::WindowFlags = "dpWindowFlags";
const char* DynamicProperty::WindowModal = "dpWindowModal";
const char* DynamicProperty::WindowAddSizeGrip = "dpSizeGrip";
const char* DynamicProperty::CaptureX = "dpNameX";
const char* DynamicProperty::CaptureY = "dpNameY";

QString ParameterType::DigitalInput = "io0";
QString ParameterType::AnalogInput = "io1";
QString ParameterType::DigitalOutput = "io2";

QList<QColor> colorForIds = {
    QColor(220, 20, 60, 195),  QColor(255, 215, 0, 195),
    QColor(20, 150, 255, 195), QColor(50, 205, 50, 195),
    QColor(Qt::cyan),          QColor(Qt::magenta)};

void BasicTools::adjustLinearAxis(double& low, double& high,
                                  unsigned int& ticks) {
  // The next step of 1, 2 or 5 times a power of ten.
  const double wanted = (high - low) / ticks;
  double step = std::pow(10, std::floor(std::log10(wanted)));
  for (const double factor : {2.0, 2.5, 2.0}) {
    if (step < wanted) step *= factor;
  }
  low = std::floor(low / step) * step;
  high = std::ceil(high / step) * step;
  ticks = std::max(1, int(std::lround((high - low) / step)));
}

QString BasicTools::intInsertDot(double value, int decimals) {
  return QString::number(value, 'f', decimals);
}

void BasicTools::setButtonIconsColor(QAbstractButton* button, QColor normal,
                                     QColor, QColor) {
  QPixmap filled(button->iconSize());
  filled.fill(normal);
  button->setIcon(filled);
}

QString BasicTools::iToHex(unsigned char value, int digits, QString prefix) {
  return prefix + QString("%1").arg(value, digits, 16, QChar('0')).toUpper();
}

QString BasicTools::ExportPNG(QWidget* widget, QString name) {
  name += ".png";
  return widget->grab().save(name) ? name : QString();
}
