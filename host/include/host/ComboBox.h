#pragma once

#include "host/HostExport.h"

#include <QComboBox>

/**
 * The host's combo box.
 *
 * clear() leaves one blank entry. Like any first entry it becomes current, and currentIndexChanged() is emitted. Code
 * that fills such a box relies on this, and removes the blank entry afterwards.
 */
class HOST_EXPORT ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget *parent = nullptr);
    ~ComboBox() override;

    void clear();
    void resetLastIndex(); ///< For hosts that keep the previous index. Does nothing here.
    void setCurrentIndex(int index);
};
