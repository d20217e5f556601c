#pragma once

#include "modules/ModuleSettings.h"

#include <QDialog>

class DeviceTest;
class ModuleRack;
class QComboBox;
class QDialogButtonBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

/**
 * Asks for a Modbus device: where it is, and which register map describes it. Can try whether it answers.
 *
 * Accepted, the device is in the rack; while that is refused the dialog stays and says why. The rack is not owned and
 * has to outlive the dialog.
 */
class DeviceDialog : public QDialog
{
    Q_OBJECT

public:
    using Medium = ConnectionSettings::Medium;

    /// For a new device, or for the one at place \a index.
    DeviceDialog(ModuleRack *rack, Medium medium, QWidget *parent = nullptr);
    DeviceDialog(ModuleRack *rack, int index, QWidget *parent = nullptr);

    /// Show the dialog in front of \a parent and return; it deletes itself.
    static void add(ModuleRack *rack, Medium medium, QWidget *parent);
    static void edit(ModuleRack *rack, int index, QWidget *parent);

    /// What the fields say.
    ModuleSettings settings() const;

    void accept() override;

private:
    static constexpr int newDevice = -1;

    DeviceDialog(ModuleRack *rack, int index, const ModuleSettings &settings, QWidget *parent);

    void makeFields();
    void makeTcpFields(QFormLayout *form);
    void makeRtuFields(QFormLayout *form);
    QWidget *makeMapField();
    void showSettings(const ModuleSettings &settings);
    void browse();
    void testDevice();
    void showResult(const QString &words, bool isProblem);

    ModuleRack *const m_rack; // not owned
    const int m_index;        // of the place in the rack
    const Medium m_medium;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_host = nullptr;
    QSpinBox *m_port = nullptr;
    QComboBox *m_serialPort = nullptr;
    QComboBox *m_baud = nullptr;
    QComboBox *m_parity = nullptr;
    QComboBox *m_stopBits = nullptr;
    QSpinBox *m_unit = nullptr;
    QLineEdit *m_map = nullptr;
    QPushButton *m_testButton = nullptr;
    QLabel *m_result = nullptr;
    DeviceTest *m_test = nullptr; // the one that runs; a child
};
