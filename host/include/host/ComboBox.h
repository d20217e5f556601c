#pragma once

#include "host/HostExport.h"

#include <QComboBox>

/**
 * The host's combo box.
 *
 * clear() empties the box and leaves ONE blank entry, added in the ordinary way: it becomes current and the change is
 * signalled. All that fills these boxes relies on it and removes the blank afterwards.
 */
class HOST_EXPORT ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget *parent = nullptr);
    ~ComboBox() override;

    void clear();
    void resetLastIndex(); ///< Hosts may remember which entry was left, and forget it here. This one does not.
    void setCurrentIndex(int index);
};
