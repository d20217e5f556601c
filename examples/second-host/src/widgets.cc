#include "secondhost/widgets.hpp"

#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {}

void ComboBox::clear() {
  QComboBox::clear();
  // An empty line to begin with, so that the first real choice is a change.
  addItem(QString());
}

void ComboBox::resetLastIndex() { last_index_ = -1; }

void ComboBox::setCurrentIndex(int index) {
  last_index_ = index;
  QComboBox::setCurrentIndex(index);
}

AppSettings::AppSettings()
    : QSettings(QSettings::IniFormat, QSettings::UserScope, "secondhost",
                "settings") {}

ExportCSV::ExportCSV(QStandardItemModel* model, QWidget* parent,
                     Qt::WindowFlags flags)
    : QWidget(parent, flags) {
  auto* table = new QTableView;
  table->setModel(model);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table);
  setAttribute(Qt::WA_DeleteOnClose);
  show();
}
