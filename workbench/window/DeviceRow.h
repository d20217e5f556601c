#pragma once

#include "window/ModuleRow.h"

class QLabel;
class QPushButton;
struct DeviceSettings;

/// The row of a device: where it is, how its connection is doing, and buttons to change or to remove it.
class DeviceRow : public ModuleRow
{
    Q_OBJECT

public:
    DeviceRow(ModuleRack *rack, const AnswerWatch *watch, int index, const DeviceSettings &settings);

    void showAnswers() override;

protected:
    QString trouble() const override;

private:
    QPushButton *makeButton(const QString &text, const QString &toolTip);
    QString stateText() const;

    QLabel *m_state = nullptr;
};
