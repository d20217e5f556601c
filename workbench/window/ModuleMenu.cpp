#include "window/ModuleMenu.h"

#include "modules/ModuleRack.h"
#include "window/DeviceDialog.h"

ModuleMenu::ModuleMenu(ModuleRack *rack, QWidget *window)
    : QMenu(tr("&Modules"), window), m_rack(rack), m_window(window)
{
    QMenu *const add = addMenu(tr("&Add"));
    const auto addDevice = [this, add](const QString &text, DeviceDialog::Medium medium, const QString &statusTip) {
        QAction *const action =
            add->addAction(text, this, [this, medium] { DeviceDialog::add(m_rack, medium, m_window); });
        action->setStatusTip(statusTip);
        action->setWhatsThis(statusTip);
    };
    addDevice(tr("Modbus &TCP…"), DeviceDialog::Medium::Tcp, tr("Add a device that is reached over the network"));
    addDevice(tr("Modbus &RTU…"), DeviceDialog::Medium::Rtu, tr("Add a device at a serial port"));
    m_edit = addMenu(tr("&Edit"));
    m_remove = addMenu(tr("&Remove"));
    connect(this, &QMenu::aboutToShow, this, &ModuleMenu::fillLists);
    fillLists();
}

/// Simulated modules are there for as long as the workbench runs.
void ModuleMenu::fillLists()
{
    m_edit->clear();
    m_remove->clear();
    for (int index = 0; index < m_rack->count(); ++index) {
        const QString text = QString(m_rack->settings(index).key).replace(QLatin1Char('&'), QStringLiteral("&&"));
        if (m_rack->device(index) != nullptr) {
            m_edit->addAction(text + QStringLiteral("…"), this,
                              [this, index] { DeviceDialog::edit(m_rack, index, m_window); });
            m_remove->addAction(text, this, [this, index] { m_rack->remove(index); });
        }
    }
    m_edit->setEnabled(!m_edit->isEmpty());
    m_remove->setEnabled(!m_remove->isEmpty());
}
