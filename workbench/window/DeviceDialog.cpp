#include "window/DeviceDialog.h"

#include "modules/ModuleRack.h"
#include "modules/modbus/DeviceTest.h"
#include "modules/modbus/DeviceText.h"
#include "modules/modbus/SerialPorts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace
{

constexpr int fieldWidth = 36; // average characters
constexpr int resultLines = 3;
constexpr int maximumNameCharacters = 40;

using Medium = ConnectionSettings::Medium;
using Parity = ConnectionSettings::Parity;

/// A list that looks for ports again whenever it is opened: an adapter may be plugged in meanwhile.
class PortBox : public QComboBox
{
public:
    PortBox()
    {
        setEditable(true);
        setInsertPolicy(QComboBox::NoInsert);
        setMinimumContentsLength(fieldWidth);
        setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        fill();
    }

    void showPopup() override
    {
        const QString text = currentText();
        fill();
        setEditText(text);
        QComboBox::showPopup();
    }

private:
    void fill()
    {
        clear();
        const QVector<SerialPort> ports = serialPorts();
        for (const SerialPort &port : ports) {
            addItem(port.path);
            setItemData(count() - 1, port.text, Qt::ToolTipRole);
        }
    }
};

/// Says what a control is for, as a tool tip and in the help mode.
template<typename Widget> Widget *explained(Widget *widget, const QString &text)
{
    widget->setToolTip(text);
    widget->setWhatsThis(text);
    return widget;
}

QSpinBox *numberBox(int minimum, int maximum)
{
    auto *const box = new QSpinBox;
    box->setRange(minimum, maximum);
    return box;
}

void choose(QComboBox *box, const QVariant &data)
{
    box->setCurrentIndex(qMax(0, box->findData(data)));
}

/// A key for \a device whose first part no other module has.
QString freeKey(const ModuleRack &rack, const DeviceSettings &device)
{
    QStringList taken;
    for (int index = 0; index < rack.count(); ++index) {
        taken.append(rack.settings(index).key.section(QLatin1Char('/'), 0, 0));
    }
    int number = 0;
    while (taken.contains(deviceKey(number, device).section(QLatin1Char('/'), 0, 0))) {
        ++number;
    }
    return deviceKey(number, device);
}

ModuleSettings newSettings(Medium medium)
{
    DeviceSettings device;
    device.connection.medium = medium;
    return {QString(), device};
}

const DeviceSettings &deviceOf(const ModuleSettings &settings)
{
    return std::get<DeviceSettings>(settings.family);
}

} // namespace

DeviceDialog::DeviceDialog(ModuleRack *rack, Medium medium, QWidget *parent)
    : DeviceDialog(rack, newDevice, newSettings(medium), parent)
{
}

DeviceDialog::DeviceDialog(ModuleRack *rack, int index, QWidget *parent)
    : DeviceDialog(rack, index, rack->settings(index), parent)
{
}

DeviceDialog::DeviceDialog(ModuleRack *rack, int index, const ModuleSettings &settings, QWidget *parent)
    : QDialog(parent), m_rack(rack), m_index(index), m_medium(deviceOf(settings).connection.medium)
{
    const QString newTitle = m_medium == Medium::Tcp ? tr("Add Modbus TCP Device") : tr("Add Modbus RTU Device");
    setWindowTitle(index == newDevice ? newTitle : tr("Edit %1").arg(settings.key));
    makeFields();
    showSettings(settings);
    // The place is another's once the rack has changed behind the dialog.
    connect(m_rack, &ModuleRack::removed, this, &QDialog::reject);
}

void DeviceDialog::add(ModuleRack *rack, Medium medium, QWidget *parent)
{
    auto *const dialog = new DeviceDialog(rack, medium, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void DeviceDialog::edit(ModuleRack *rack, int index, QWidget *parent)
{
    auto *const dialog = new DeviceDialog(rack, index, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void DeviceDialog::makeFields()
{
    auto *const form = new QFormLayout;
    if (m_medium == Medium::Tcp) {
        makeTcpFields(form);
    } else {
        makeRtuFields(form);
    }
    m_unit = explained(m_medium == Medium::Tcp ? numberBox(0, ConnectionSettings::maximumTcpUnit)
                                               : numberBox(1, ConnectionSettings::maximumSerialUnit),
                       tr("The number of the device, also called slave address. Devices with a network port of their "
                          "own mostly take 1 or 255."));
    form->addRow(tr("&Unit:"), m_unit);
    form->addRow(tr("Register &map:"), makeMapField());
    m_name = explained(new QLineEdit, tr("What the device is called in lists; without a name it is called after its "
                                         "register map"));
    m_name->setMaxLength(maximumNameCharacters);
    form->addRow(tr("&Name:"), m_name);

    m_testButton = explained(new QPushButton(tr("&Test")),
                             tr("Try to read the first value of the register map; nothing is written to the device"));
    m_testButton->setAutoDefault(false);
    connect(m_testButton, &QPushButton::clicked, this, &DeviceDialog::testDevice);
    m_result = new QLabel;
    m_result->setObjectName(QStringLiteral("testResult"));
    m_result->setWordWrap(true);
    m_result->setTextFormat(Qt::PlainText);
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_result->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_result->setMinimumHeight(resultLines * m_result->fontMetrics().lineSpacing());
    auto *const testRow = new QHBoxLayout;
    testRow->addWidget(m_testButton, 0, Qt::AlignTop);
    testRow->addWidget(m_result, 1);

    auto *const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(m_index == newDevice ? tr("&Add") : tr("&Change"));
    connect(buttons, &QDialogButtonBox::accepted, this, &DeviceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &DeviceDialog::reject);
    auto *const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(testRow);
    layout->addStretch(1);
    layout->addWidget(buttons);
}

void DeviceDialog::makeTcpFields(QFormLayout *form)
{
    m_host = explained(new QLineEdit, tr("Name or address of the device, such as 192.168.0.10"));
    m_host->setMinimumWidth(fieldWidth * m_host->fontMetrics().averageCharWidth());
    form->addRow(tr("&Host:"), m_host);
    m_port = explained(numberBox(1, ConnectionSettings::maximumPort),
                       tr("The TCP port of the device; 502 is the usual one"));
    form->addRow(tr("&Port:"), m_port);
}

void DeviceDialog::makeRtuFields(QFormLayout *form)
{
    m_serialPort = explained(new PortBox, tr("The serial port that the device is connected to. A name below "
                                             "/dev/serial/by-id stays with its adapter, wherever that is plugged in."));
    form->addRow(tr("Serial &port:"), m_serialPort);
    m_baud = explained(new QComboBox, tr("Bits per second, as set in the device"));
    for (const int baud : ConnectionSettings::standardBauds()) {
        m_baud->addItem(QString::number(baud), baud);
    }
    form->addRow(tr("&Baud:"), m_baud);
    m_parity =
        explained(new QComboBox, tr("As set in the device; Modbus has even parity unless a device says otherwise"));
    m_parity->addItem(tr("None"), int(Parity::None));
    m_parity->addItem(tr("Even"), int(Parity::Even));
    m_parity->addItem(tr("Odd"), int(Parity::Odd));
    form->addRow(tr("P&arity:"), m_parity);
    m_stopBits = explained(new QComboBox, tr("As set in the device; mostly 1, and 2 without parity"));
    for (const int bits : {1, 2}) {
        m_stopBits->addItem(QString::number(bits), bits);
    }
    form->addRow(tr("&Stop bits:"), m_stopBits);
}

QWidget *DeviceDialog::makeMapField()
{
    auto *const field = new QWidget;
    m_map = explained(new QLineEdit, tr("The JSON file that describes the values of the device"));
    m_map->setMinimumWidth(fieldWidth * m_map->fontMetrics().averageCharWidth());
    auto *const browseButton = explained(new QPushButton(tr("B&rowse…")), tr("Choose the register map from a list"));
    browseButton->setAutoDefault(false);
    connect(browseButton, &QPushButton::clicked, this, &DeviceDialog::browse);
    auto *const layout = new QHBoxLayout(field);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_map, 1);
    layout->addWidget(browseButton);
    field->setFocusProxy(m_map); // for the shortcut of the label
    return field;
}

void DeviceDialog::showSettings(const ModuleSettings &settings)
{
    const DeviceSettings &device = deviceOf(settings);
    const ConnectionSettings &connection = device.connection;
    if (m_medium == Medium::Tcp) {
        m_host->setText(connection.host);
        m_host->selectAll();
        m_port->setValue(connection.port);
    } else {
        if (!connection.serialPort.isEmpty()) {
            m_serialPort->setEditText(connection.serialPort);
        }
        m_serialPort->lineEdit()->selectAll(); // it has the focus: what is typed takes its place
        choose(m_baud, connection.baud);
        choose(m_parity, int(connection.parity));
        choose(m_stopBits, connection.stopBits);
    }
    m_unit->setValue(connection.unit);
    m_map->setText(device.mapFile);
    m_name->setText(settings.key);
}

ModuleSettings DeviceDialog::settings() const
{
    DeviceSettings device;
    ConnectionSettings &connection = device.connection;
    connection.medium = m_medium;
    connection.unit = m_unit->value();
    if (m_medium == Medium::Tcp) {
        connection.host = m_host->text().trimmed();
        connection.port = quint16(m_port->value());
    } else {
        connection.serialPort = m_serialPort->currentText().trimmed();
        connection.baud = m_baud->currentData().toInt();
        connection.parity = Parity(m_parity->currentData().toInt());
        connection.stopBits = m_stopBits->currentData().toInt();
    }
    // A set-up that is saved elsewhere has to find the map, too.
    const QString map = m_map->text().trimmed();
    device.mapFile = map.isEmpty() ? map : QFileInfo(map).absoluteFilePath();
    const QString name = m_name->text().simplified();
    return {name.isEmpty() ? freeKey(*m_rack, device) : name, device};
}

void DeviceDialog::accept()
{
    const ModuleSettings wanted = settings();
    const QString problem = m_index == newDevice ? m_rack->add(wanted) : m_rack->replace(m_index, wanted);
    if (problem.isEmpty()) {
        QDialog::accept();
    } else {
        showResult(problem, true);
    }
}

void DeviceDialog::browse()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Register Map"), m_map->text(),
                                                      tr("Register maps (*.json);;All files (*)"));
    if (!path.isEmpty()) {
        m_map->setText(path);
    }
}

void DeviceDialog::testDevice()
{
    delete m_test;
    m_test = new DeviceTest(deviceOf(settings()), this);
    connect(m_test, &DeviceTest::finished, this,
            [this](bool isAnswered, const QString &words) { showResult(words, !isAnswered); });
    m_test->start();
    showResult(tr("Trying…"), false);
}

void DeviceDialog::showResult(const QString &words, bool isProblem)
{
    m_result->setText(isProblem ? QStringLiteral("\u26A0 ") + words : words);
}
