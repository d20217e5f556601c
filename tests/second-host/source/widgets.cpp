#include "secondhost/widgets.h"

#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

ComboBox::ComboBox(QWidget *parent)
    : QComboBox(parent) {}

void ComboBox::clear() {
    QComboBox::clear();
    // An empty line to begin with, so that the first real choice is a change.
    addItem(QString());
}

void ComboBox::resetLastIndex() { m_lastIndex = -1; }

void ComboBox::setCurrentIndex(int index) {
    m_lastIndex = index;
    QComboBox::setCurrentIndex(index);
}

AppSettings::AppSettings()
    : QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("secondhost"), QStringLiteral("settings")) {}

ExportCSV::ExportCSV(QStandardItemModel *model, QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags) {
    auto *table = new QTableView;
    table->setModel(model);
    (new QVBoxLayout(this))->addWidget(table);
}
