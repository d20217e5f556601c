// Widgets and settings.
#pragma once

#include <QComboBox>
#include <QSettings>

#include "secondhost/constants.hpp"

class QStandardItemModel;

class SECONDHOST_API ComboBox : public QComboBox {
  Q_OBJECT

 public:
  ComboBox(QWidget* parent);
  void clear();
  void resetLastIndex();
  void setCurrentIndex(int index);

 private:
  int last_index_ = -1;
};

class SECONDHOST_API AppSettings : public QSettings {
 public:
  AppSettings();
};

class SECONDHOST_API ExportCSV : public QWidget {
  Q_OBJECT

 public:
  ExportCSV(QStandardItemModel* model, QWidget* parent, Qt::WindowFlags flags);
};
