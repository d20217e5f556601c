// The window's commands: all buttons are connected to one slot, which distinguishes them by sender().

#include "AxisCombo.h"
#include "ParameterTable.h"
#include "Plotter.h"
#include "TableRoles.h"
#include "XYPlotter.h"
#include "ui_XYPlotter.h"

#include "host/BasicTools.h"
#include "host/ExportCSV.h"

#include <QDebug>
#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QPen>
#include <QStandardItemModel>

namespace
{

void setColumnCaption(QStandardItemModel *model, int column, const QString &name, const QString &caption)
{
    model->setHorizontalHeaderItem(column, new QStandardItem(name));
    model->setHeaderData(column, Qt::Horizontal, QStringLiteral("\n%1\n%2\n").arg(caption, name), Qt::ToolTipRole);
    model->setHeaderData(column, Qt::Horizontal, caption, TableRole::Caption);
}

QStandardItem *numberItem(double value)
{
    return new QStandardItem(QString::number(value, 'g', 6));
}

} // namespace

void XYPlotter::btnClicked(int idx)
{
    const QObject *const origin = sender();
    if (ui == nullptr || origin == nullptr) {
        return;
    }
    if (origin == ui->btnRefresh) {
        updateModuleList();
    } else if (origin == &curveRadioButtons) {
        selectCurve(idx);
    } else if (origin == ui->btnCamera) {
        qInfo().noquote() << BasicTools::ExportPNG(plotter, QStringLiteral("xyp"));
    } else if (origin == ui->btnExport) {
        exportPoints();
    } else if (origin == ui->btnResetData) {
        clearPoints();
    } else if (origin == &plotter->curveButtons || origin == plotter->showAllDataCheck) {
        // The curves in the data lines change, and would not match the header any more.
        stopRecording();
    }
}

void XYPlotter::selectCurve(int index)
{
    ui->dockWidgetContentsX->setCurrentIndex(index);
    ui->dockWidgetContentsY->setCurrentIndex(index);
    QPen pen = trailItem->pen();
    if (const QAbstractButton *const button = curveRadioButtons.checkedButton()) {
        pen.setColor(QColor(button->property("ColorName").toString()));
    }
    trail.clear();
    trailItem->setPolygon(trail);
    ui->graphicsView->scene()->update();
    trailItem->setPen(pen);
}

void XYPlotter::exportPoints()
{
    int rows = 0;
    int pairs = 0;
    for (int index = 0; index < axisCombos.size(); ++index) {
        const int size = axisCombos.at(index)->points->size();
        rows = qMax(rows, size);
        // Not the rule by which columns are filled below: a curve of one point whose box is off gets columns beyond the
        // counted ones, and a curve without points whose box is on leaves two columns empty.
        if (size > 1 || isSwitchedOn(index)) {
            ++pairs;
        }
    }
    auto *const model = new QStandardItemModel(rows, 2 * pairs, this);
    int column = 0;
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        if (curve->points->isEmpty()) {
            continue;
        }
        setColumnCaption(model, column, curve->xName, ParameterTable::caption(curve->xModel));
        setColumnCaption(model, column + 1, curve->yName, ParameterTable::caption(curve->yModel));
        for (int row = 0; row < curve->points->size(); ++row) {
            model->setItem(row, column, numberItem(curve->points->at(row).x()));
            model->setItem(row, column + 1, numberItem(curve->points->at(row).y()));
        }
        column += 2;
    }
    QWidget *const window = parentWidget();
    // Copied to the heap, unlike QStringLiteral: the window may outlive the plugin's file and its static data.
    const QString windowName = QString::fromLatin1("ExportXY");
    if (window != nullptr) {
        if (auto *const previous = window->findChild<ExportCSV *>(windowName)) {
            previous->deleteLater();
        }
    }
    auto *const exportWindow = new ExportCSV(model, window, Qt::Tool);
    exportWindow->setObjectName(windowName);
    connect(exportWindow, SIGNAL(destroyed()), model, SLOT(deleteLater()));
}

void XYPlotter::clearPoints()
{
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        curve->points->resize(0);
    }
    // The plot keeps drawing the old points of a curve until its next point, which also resets the range.
    setStartRange();
    applyPlotSettings();
}

void XYPlotter::stopRecording()
{
    if (recording) {
        ui->cbLog->setChecked(false);
    }
}

bool XYPlotter::isSwitchedOn(int index) const
{
    const QAbstractButton *const button = plotter->curveButtons.button(index);
    return button != nullptr && button->isChecked();
}
