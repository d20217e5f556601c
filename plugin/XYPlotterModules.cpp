// The module lists: which modules there are, and which motors the chosen one has.

#include "AxisCombo.h"
#include "SelectorPage.h"
#include "XYPlotter.h"

#include "host/ComboBox.h"
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
    // Whichever module came or went: no source may be read before it has been chosen again.
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
        // By position alone, not by the box's name: every curve gets its turn, twice.
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
        KAROModuleInterface *const module = handler == nullptr ? nullptr : handler->getModulePlugin(key);
        if (module == nullptr) {
            continue;
        }
        const QVariantList entryData{key, module->name()};
        const QString label = composeModuleLabel(key, module);
        Q_UNUSED(label) // asked for and not shown: the entry's text stays the key
        combo->addItem(QIcon(), entryIndent + key, entryData);
    }
    combo->setCurrentIndex(-1);
    // Without a module to choose the box stays silent until a later refill finds one. Entry 0 is the blank that
    // clear() left.
    if (combo->count() > 1) {
        combo->blockSignals(false);
        combo->removeItem(0);
    }
    const SelectorPage page(combo);
    if (page.isValid() && keys.isEmpty()) {
        page.motorBox()->hide();
        page.table()->setModel(nullptr);
    }
}

QString XYPlotter::composeModuleLabel(const QString &key, KAROModuleInterface *module)
{
    QString label = key.split(QLatin1Char('/')).constLast();
    if (label == module->name()) {
        label.clear();
    } else {
        if (const KAROModuleInterface *const owner = pluginHandler()->getModulePlugin(label)) {
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
    KAROModuleInterface *const module = pluginHandler() == nullptr ? nullptr : pluginHandler()->getModulePlugin(key);
    if (module == nullptr) {
        setMotorTable(0);
        return;
    }
    const int axes = module->numberOfAxes();
    const SelectorPage page(combo);
    // A module chosen on the page of one curve drives this axis of all curves.
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        if (AxisCombo *const source = page.isX() ? curve->x : page.isY() ? curve->y : nullptr) {
            source->bind(module, module->commandHandlerInterface(), module->moduleAddress());
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
    // Not blocked: the blank entry that clear() makes current shows the table of motor 0 at once.
    motorBox->clear();
    if (hasMotorChoice) {
        fillMotorBox(motorBox, *module, axes, hasRegisters);
    }
    motorBox->setCurrentIndex(-1);
    if (motorBox->count() > 1) {
        motorBox->removeItem(0); // the blank; from here on the row is the number of the axis
    }
}

void XYPlotter::fillMotorBox(ComboBox *motorBox, const KAROModuleInterface &module, int axes, bool hasRegisters)
{
    QVariantList keys; // one copy of the key more with each entry; readers take the first
    for (int axis = 0; axis < axes; ++axis) {
        keys.append(module.key());
        motorBox->addItem(QStringLiteral("  Axis ") + QString::number(axis), keys);
    }
    if (hasRegisters) {
        keys.append(module.key());
        motorBox->addItem(QStringLiteral("  Register"), keys);
    }
}
