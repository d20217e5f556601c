#include "host/ComboBox.h"

ComboBox::ComboBox(QWidget *parent) : QComboBox(parent) {}

ComboBox::~ComboBox() = default;

void ComboBox::clear()
{
    QComboBox::clear();
    addItem(QString());
}

void ComboBox::resetLastIndex()
{
    m_lastIndex = -1;
}

void ComboBox::setCurrentIndex(int index)
{
    m_lastIndex = currentIndex();
    QComboBox::setCurrentIndex(index);
}

int ComboBox::lastIndex() const
{
    return m_lastIndex;
}
