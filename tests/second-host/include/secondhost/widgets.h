#pragma once

#include "base.h"

#include <QComboBox>
#include <QSettings>

class QStandardItemModel;

class SECONDHOST_EXPORT ComboBox : public QComboBox
{
    Q_OBJECT
public:
    explicit ComboBox(QWidget *parent);
    void clear();
    void resetLastIndex();
    void setCurrentIndex(int index);

private:
    int m_lastIndex = -1;
};

class SECONDHOST_EXPORT AppSettings : public QSettings
{
public:
    AppSettings();
};

class SECONDHOST_EXPORT ExportCSV : public QWidget
{
    Q_OBJECT
public:
    ExportCSV(QStandardItemModel *model, QWidget *parent, Qt::WindowFlags flags);
};
