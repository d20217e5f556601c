// The selector pages: the tables of values, and the choice of a row as the source of a curve.

#include "AxisCombo.h"
#include "ChoiceTable.h"
#include "ParameterTable.h"
#include "Plotter.h"
#include "RegisterCommand.h"
#include "SelectorPage.h"
#include "TableRoles.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include "host/ComboBox.h"
#include "host/DynamicProperty.h"
#include "host/HostAccess.h"
#include "host/HostLogging.h"
#include "host/PluginHandler.h"

#include <QDebug>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int registerChannel = 1;
constexpr int cellAlignment = 132; // horizontally and vertically centred
constexpr int wholeRegisterBits = 32;

unsigned char lowByte(const QVariant &value)
{
    return static_cast<unsigned char>(value.toUInt() & 0xFFU);
}

QVariant cell(const QModelIndex &index, int column, int role)
{
    return index.sibling(index.row(), column).data(role);
}

void debugChoice(const QModelIndex &index, const SelectorPage &page, const QObject *sender)
{
    const QByteArray bytes = HostAccess::lineEnd().toLatin1();
    const char *const lineEnd = bytes.constData();
    qCDebug(debLowLevel) << "void XYPlotter::itemClicked(QModelIndex)" << page.curve()
                         << cell(index, TableColumn::Name, Qt::DisplayRole).toString() << page.suffix() << sender
                         << lineEnd << "Instruction:" << cell(index, TableColumn::Command, TableRole::Command)
                         << lineEnd << "Motor      :" << cell(index, TableColumn::Command, TableRole::MotorBank)
                         << lineEnd << "Type       :" << cell(index, TableColumn::Type, TableRole::Type) << lineEnd
                         << "Offset     :" << cell(index, TableColumn::Type, TableRole::BitOffset) << lineEnd
                         << "Width      :" << cell(index, TableColumn::Type, TableRole::BitWidth) << lineEnd
                         << "CheckState :" << cell(index, TableColumn::Type, Qt::CheckStateRole);
}

void bindSource(AxisCombo *source, const QModelIndex &index)
{
    source->request.setCommand(lowByte(cell(index, TableColumn::Command, TableRole::Command)));
    source->request.setType(lowByte(cell(index, TableColumn::Type, TableRole::Type)));
    source->request.setMotorBank(lowByte(cell(index, TableColumn::Command, TableRole::MotorBank)));
    const QVariant offset = cell(index, TableColumn::Type, TableRole::BitOffset);
    const QVariant width = cell(index, TableColumn::Type, TableRole::BitWidth);
    if (offset.isValid() && width.isValid()) {
        const bool isSigned = cell(index, TableColumn::Type, Qt::CheckStateRole).toBool();
        source->setRequest(&source->request, lowByte(offset), lowByte(width), isSigned);
    } else {
        source->setRequest(&source->request, 0, wholeRegisterBits, false);
    }
}

} // namespace

QWidget *XYPlotter::moduleValue(const QString &name, int index)
{
    const QString suffix = QString::number(index) + name;
    auto *const page = new QFrame;
    page->setObjectName(QStringLiteral("page") + suffix);
    auto *const layout = new QVBoxLayout(page);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);

    const QString source = tr("%1 of curve %2").arg(name.right(1)).arg(index + 1);
    auto *const moduleBox = new ComboBox(page);
    moduleBox->setObjectName(QStringLiteral("cmbm") + suffix);
    moduleBox->setAccessibleName(tr("Module for %1").arg(source));
    connect(moduleBox, SIGNAL(currentIndexChanged(int)), this, SLOT(setModule(int)));
    layout->addWidget(moduleBox);

    auto *const motorBox = new ComboBox(page);
    motorBox->setObjectName(QStringLiteral("motor") + suffix);
    motorBox->setAccessibleName(tr("Motor for %1").arg(source));
    motorBox->resetLastIndex();
    motorBox->clear();
    connect(motorBox, SIGNAL(currentIndexChanged(int)), this, SLOT(setMotorTable(int)));
    layout->addWidget(motorBox);

    QTableView *const table = createTable(QStringLiteral("cmds") + suffix, page);
    table->setAccessibleName(tr("Value for %1").arg(source));
    layout->addWidget(table);
    return page;
}

QTableView *XYPlotter::createTable(const QString &name, QWidget *parent)
{
    auto *const table = new ChoiceTable(parent);
    table->setObjectName(name);
    connect(table, SIGNAL(clicked(QModelIndex)), this, SLOT(itemClicked(QModelIndex)));
    table->setAlternatingRowColors(true);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->setVisible(false);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setMouseTracking(true);
    table->setTabKeyNavigation(false); // so that Tab leaves the table
    return table;
}

void XYPlotter::setMotorTable(int motor)
{
    const SelectorPage page(qobject_cast<QWidget *>(sender()));
    if (motor < 0 || !page.isValid() || pluginHandler() == nullptr) {
        return;
    }
    KAROModuleInterface *const module = HostAccess::modulePlugin(*pluginHandler(), page.currentModuleKey());
    if (module == nullptr) {
        return;
    }
    page.table()->hide();
    const QString alias = module->getAliasName();
    if (motor < static_cast<int>(module->numberOfAxes())) {
        auto *const model = new QStandardItemModel(1, TableColumn::Count, this);
        ParameterTable::fillAxisTable(model, module, motor);
        showTable(page, model, alias + QStringLiteral(" [Axis %1]").arg(motor));
        return;
    }
    const QList<Register *> registers = HostAccess::currentRegisters(tempTools);
    if (registers.isEmpty()) {
        return;
    }
    const int command = static_cast<int>(module->getChannel()) == registerChannel ? RegisterCommand::ReadOnChannel
                                                                                  : RegisterCommand::Read;
    auto *const model = new QStandardItemModel(1, TableColumn::Count, this);
    ParameterTable::fillRegisterTable(model, registers, command, signIcon);
    showTable(page, model, alias + QStringLiteral(" [Register]"));
}

void XYPlotter::showTable(const SelectorPage &page, QStandardItemModel *model, const QString &title)
{
    if (model->rowCount() < 1) {
        model->deleteLater();
        return;
    }
    QTableView *const table = page.table();
    model->setHeaderData(0, Qt::Horizontal, title, TableRole::Caption);
    replaceTable(page, model);
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            model->setData(model->index(row, column), cellAlignment, Qt::TextAlignmentRole);
        }
    }
    table->resizeRowsToContents();
    table->resizeColumnsToContents();
    table->show();
    const int row = settings.value(page.rememberedRowKey()).toInt();
    table->setCurrentIndex(model->index(row, 0));
    itemClicked(table->currentIndex());
}

void XYPlotter::replaceTable(const SelectorPage &page, QStandardItemModel *model)
{
    QAbstractItemModel *const replaced = page.table()->model();
    page.table()->setModel(model);
    releaseTable(replaced); // deletes the selection models of the view and its headers, too
}

void XYPlotter::releaseTable(QAbstractItemModel *model)
{
    if (model == nullptr || model->parent() != this) {
        return;
    }
    // Curves read their captions from the table they were chosen from, even if it is not shown. No table is in two
    // views.
    const auto isRead = [model](const XYaxisCombo *curve) { return curve->xModel == model || curve->yModel == model; };
    if (std::none_of(axisCombos.cbegin(), axisCombos.cend(), isRead)) {
        model->deleteLater();
    }
}

void XYPlotter::itemClicked(QModelIndex index)
{
    if (index.row() < 0 || sender() == nullptr) {
        return;
    }
    const SelectorPage page(qobject_cast<QWidget *>(sender()));
    const int curveIndex = page.curve();
    const bool isX = page.isX();
    const QString name = cell(index, TableColumn::Name, Qt::DisplayRole).toString();
    debugChoice(index, page, sender());
    if (!page.isValid() || !(isX || page.isY()) || curveIndex >= axisCombos.size()) {
        return;
    }
    XYaxisCombo *const curve = axisCombos.at(curveIndex);
    stopRecordingForNewSource(*curve, curveIndex, isX, name);

    auto *const model = const_cast<QAbstractItemModel *>(index.model());
    QAbstractItemModel *const previousModel = isX ? curve->xModel : curve->yModel;
    QAbstractButton *const curveButton = plotter->curveButtons.button(curveIndex);
    if (isX) {
        curve->xModel = model;
        // For X only: readers of these messages expect one per choice of X, with the caption of its table.
        qDebug() << "Model   :" << model << model->headerData(0, Qt::Horizontal, TableRole::Caption);
        curve->xName = name;
        curveButton->setProperty(DynamicProperty::CaptureX, name);
    } else {
        curve->yModel = model;
        curve->yName = name;
        curveButton->setProperty(DynamicProperty::CaptureY, name);
    }
    releaseTable(previousModel);
    AxisCombo *const source = isX ? curve->x : curve->y;
    bindSource(source, index);
    if (name.isEmpty()) {
        source->switchOff();
    }
    curve->points->resize(0);
    settings.setValue(page.rememberedRowKey(), index.row());
}

void XYPlotter::stopRecordingForNewSource(const XYaxisCombo &curve, int curveIndex, bool isX, const QString &name)
{
    if (!recording || !(isSwitchedOn(curveIndex) || plotter->showAllDataCheck->isChecked())) {
        return;
    }
    if (name != (isX ? curve.xName : curve.yName)) {
        ui->cbLog->setChecked(false);
    }
}
