// The module lists: which modules there are, and which motors the chosen one has.

#include "AxisCombo.h"
#include "SelectorPage.h"
#include "XYPlotter.h"

#include "host/ComboBox.h"
#include "host/HostAccess.h"
#include "host/HostLogging.h"
#include "host/PluginHandler.h"

#include <QAbstractButton>
#include <QDebug>
#include <QRegularExpression>
#include <QTableView>
#include <QTimer>

namespace
{

constexpr int moduleNoticeDelayMs = 10;
constexpr int boxesPerCurve = 2;

const QString entryIndent = QStringLiteral("  ");

} // namespace

void XYPlotter::handleModulePlugin(KAROModuleInterface *plugin, QString msg)
{
    qCDebug(debLowLevel) << "virtual void XYPlotter::handleModulePlugin(KAROModuleInterface*, QString)"
                         << static_cast<void *>(plugin) << msg;
    QTimer::singleShot(moduleNoticeDelayMs, this, SLOT(updateModuleList()));
    // For any module that comes or goes: no source may be read until it has been chosen again.
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        for (AxisCombo *const source : {curve->x, curve->y}) {
            source->switchOff();
        }
    }
}

void XYPlotter::updateModuleList()
{
    const int selectedCurve = curveRadioButtons.checkedId();
    const QList<ComboBox *> boxes = findChildren<ComboBox *>(QRegularExpression(QStringLiteral("cmbm.+")));
    for (int position = 0; position < boxes.size(); ++position) {
        // By position and not by the box's name: every curve is selected twice.
        if (QAbstractButton *const button = curveRadioButtons.button(position / boxesPerCurve)) {
            button->click();
        }
        updateModuleList(boxes.at(position));
    }
    if (QAbstractButton *const button = curveRadioButtons.button(selectedCurve)) {
        button->click();
    }
}

void XYPlotter::updateModuleList(ComboBox *combo)
{
    PluginHandler *const handler = pluginHandler();
    const QStringList keys = handler == nullptr ? QStringList() : handler->getModulePluginKeys(false);
    combo->blockSignals(true);
    combo->resetLastIndex();
    combo->clear();
    for (const QString &key : keys) {
        KAROModuleInterface *const module = handler == nullptr ? nullptr : HostAccess::modulePlugin(*handler, key);
        if (module == nullptr) {
            continue;
        }
        const QVariantList entryData{key, module->name()};
        const QString label = composeModuleLabel(key, module);
        Q_UNUSED(label) // composing it calls the modules; the text shown is the key
        combo->addItem(QIcon(), entryIndent + key, entryData);
    }
    combo->setCurrentIndex(-1);
    // Without modules the signals of the box stay blocked until a later refill. Entry 0 is the blank one of clear().
    if (combo->count() > 1) {
        combo->blockSignals(false);
        combo->removeItem(0);
    }
    const SelectorPage page(combo);
    if (page.isValid() && keys.isEmpty()) {
        page.motorBox()->hide();
        replaceTable(page, nullptr);
    }
}

QString XYPlotter::composeModuleLabel(const QString &key, KAROModuleInterface *module)
{
    QString label = key.split(QLatin1Char('/')).constLast();
    if (label == module->name()) {
        label.clear();
    } else {
        if (const KAROModuleInterface *const owner = HostAccess::modulePlugin(*pluginHandler(), label)) {
            label = owner->getAliasName();
        }
        label += QStringLiteral("> ");
    }
    return label + module->getAliasName();
}

void XYPlotter::setModule(int idx)
{
    auto *const combo = qobject_cast<ComboBox *>(sender());
    if (combo == nullptr || combo->currentText().isEmpty()) {
        return;
    }
    const QString key = combo->itemData(idx).toList().value(0).toString();
    KAROModuleInterface *const module =
        pluginHandler() == nullptr ? nullptr : HostAccess::modulePlugin(*pluginHandler(), key);
    if (module == nullptr) {
        setMotorTable(0);
        return;
    }
    const int axes = static_cast<int>(module->numberOfAxes());
    const SelectorPage page(combo);
    // A module that is chosen on the page of one curve becomes the source of this axis for all curves.
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        if (AxisCombo *const source = page.isX() ? curve->x : page.isY() ? curve->y : nullptr) {
            source->bind(module, module->commandHandlerInterface(),
                         static_cast<unsigned char>(module->moduleAddress()));
        }
    }
    if (!page.isValid()) {
        return;
    }
    ComboBox *const motorBox = page.motorBox();
    const bool hasRegisters = tempTools.fillCurrentRegisterList(module, {1, 3});
    const bool hasMotorChoice = axes >= 2 || hasRegisters;
    motorBox->setVisible(hasMotorChoice);
    motorBox->resetLastIndex();
    // Signals are not blocked: clear() makes its blank entry current, which shows the table of motor 0 at once.
    motorBox->clear();
    if (hasMotorChoice) {
        fillMotorBox(motorBox, *module, axes, hasRegisters);
    }
    motorBox->setCurrentIndex(-1);
    if (motorBox->count() > 1) {
        motorBox->removeItem(0); // the blank entry: now the row is the number of the axis
    }
}

void XYPlotter::fillMotorBox(ComboBox *motorBox, const KAROModuleInterface &module, int axes, bool hasRegisters)
{
    QVariantList keys; // grows by one copy of the key with each entry; only the first is read
    for (int axis = 0; axis < axes; ++axis) {
        keys.append(module.key());
        motorBox->addItem(QStringLiteral("  Axis ") + QString::number(axis), keys);
    }
    if (hasRegisters) {
        keys.append(module.key());
        motorBox->addItem(QStringLiteral("  Register"), keys);
    }
}
