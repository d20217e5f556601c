#include "window/DeviceRow.h"

#include "modules/ModuleRack.h"
#include "modules/modbus/ConnectionTrouble.h"
#include "modules/modbus/ModbusModule.h"
#include "window/DeviceDialog.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

namespace
{

constexpr int recentMs = 2000; ///< values that are older are no longer asked for

/// Where the device is and by which map it is read; lines may break at any slash.
QString summaryOf(const DeviceSettings &settings)
{
    const QString line = settings.connection.lineName().replace(QLatin1Char('/'), QStringLiteral("/\u200B"));
    return DeviceRow::tr("%1, unit %2\n%3")
        .arg(line)
        .arg(settings.connection.unit)
        .arg(QFileInfo(settings.mapFile).fileName());
}

bool isConnecting(const ModbusChannel::State &state)
{
    return state.trouble == ConnectionTrouble{ConnectionTrouble::Kind::Connecting, 0, {}}.words();
}

bool isAsked(const ModbusChannel::State &state)
{
    return state.ageMs >= 0 && state.ageMs <= recentMs;
}

} // namespace

DeviceRow::DeviceRow(ModuleRack *rack, const AnswerWatch *watch, int index, const DeviceSettings &settings)
    : ModuleRow(rack, watch, index, summaryOf(settings))
{
    setToolTip(settings.mapFile);
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("deviceState"));
    m_state->setWordWrap(true);
    m_state->setToolTip(tr("Whether the device is connected, how often a second it really answers, and how old its "
                           "newest values are"));
    m_state->setWhatsThis(m_state->toolTip());
    QPushButton *const edit = makeButton(tr("Edit…"), tr("Change where the device is and how it is read; its values "
                                                         "have to be chosen again then"));
    QPushButton *const remove = makeButton(tr("Remove"), tr("Remove the device from the workbench"));
    connect(edit, &QPushButton::clicked, this, [this] { DeviceDialog::edit(this->rack(), this->index(), window()); });
    connect(remove, &QPushButton::clicked, this, [this] { this->rack()->remove(this->index()); });
    controls()->addWidget(m_state, 0, 0, 1, 2);
    controls()->addWidget(edit, 1, 0);
    controls()->addWidget(remove, 1, 1);
    DeviceRow::showAnswers();
}

void DeviceRow::showAnswers()
{
    ModuleRow::showAnswers();
    m_state->setText(stateText());
}

QString DeviceRow::trouble() const
{
    const auto *const module = rack()->moduleAs<ModbusModule>(index());
    const ModbusChannel::State state = module == nullptr ? ModbusChannel::State() : module->state();
    if (!state.trouble.isEmpty() && !isConnecting(state)) {
        return state.trouble;
    }
    // The last exchange of the curves says nothing of a device that answers now while no curve reads it.
    return isAsked(state) || !state.isKnownToAnswer ? ModuleRow::trouble() : QString();
}

QPushButton *DeviceRow::makeButton(const QString &text, const QString &toolTip)
{
    auto *const button = new QPushButton(text);
    button->setToolTip(toolTip);
    button->setWhatsThis(toolTip);
    button->setAccessibleName(tr("%1: %2").arg(title(), text));
    return button;
}

QString DeviceRow::stateText() const
{
    const auto *const module = rack()->moduleAs<ModbusModule>(index());
    if (module == nullptr) {
        return tr("Taken out");
    }
    const ModbusChannel::State state = module->state();
    if (!state.isConnected) {
        return isConnecting(state) ? state.trouble : tr("Not connected, trying again");
    }
    if (!state.trouble.isEmpty()) {
        return tr("Connected, without values");
    }
    if (!isAsked(state)) {
        return state.isKnownToAnswer ? tr("Connected and answering, not plotted") : tr("Connected, not asked");
    }
    const QLocale locale;
    return tr("Connected, %1 answers/s, values %2 ms old")
        .arg(locale.toString(state.answersPerSecond, 'f', 0), locale.toString(state.ageMs));
}
