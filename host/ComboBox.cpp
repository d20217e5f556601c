#include "host/ComboBox.h"

ComboBox::ComboBox(QWidget *parent) : QComboBox(parent) {}

ComboBox::~ComboBox() = default;

void ComboBox::clear()
{
    QComboBox::clear();
    addItem(QString());
}

void ComboBox::resetLastIndex() {}

void ComboBox::setCurrentIndex(int index)
{
    QComboBox::setCurrentIndex(index);
}
