#include "setup/ChoiceReader.h"

#include "PlotterWindow.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QRadioButton>
#include <QTableView>

namespace
{

using PlotterWindow::Side;

struct ChoiceReaderText
{
    Q_DECLARE_TR_FUNCTIONS(ChoiceReader)
};

SceneSource readSource(const QWidget *container, int curve, Side side)
{
    const PlotterWindow::SelectorPage names = PlotterWindow::selectorPage(curve, side);
    const auto *const stack = container->findChild<QWidget *>(names.stack);
    const auto *const page = stack == nullptr ? nullptr : stack->findChild<QWidget *>(names.page);
    if (page == nullptr) {
        return {};
    }
    const auto *const modules = page->findChild<QComboBox *>(names.modules);
    const auto *const motors = page->findChild<QComboBox *>(names.motors);
    const auto *const table = page->findChild<QTableView *>(names.table);
    if (modules == nullptr || motors == nullptr || table == nullptr || table->isHidden()) {
        return {};
    }
    const QModelIndex row = table->currentIndex();
    SceneSource source;
    source.module = modules->currentText().trimmed();
    if (source.module.isEmpty() || !row.isValid()) {
        return {};
    }
    if (!motors->isHidden()) {
        // As long as none is chosen, the table is that of the first one.
        source.motor = motors->currentIndex() < 0 ? motors->itemText(0).trimmed() : motors->currentText().trimmed();
    }
    source.value = row.sibling(row.row(), PlotterWindow::nameColumn).data().toString().trimmed();
    source.isSigned = row.sibling(row.row(), PlotterWindow::signColumn).data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return source.isChosen() ? source : SceneSource();
}

bool isTicked(const QWidget *container, PlotterWindow::Option option)
{
    const auto *const box = container->findChild<QCheckBox *>(PlotterWindow::optionBoxName(option));
    return box != nullptr && box->isChecked();
}

/// Leaves out the sources that are not of the module that counts.
void keepOneModule(SceneSource SceneCurve::*side, const QString &sideName, ChosenScene &chosen)
{
    QList<SceneCurve> &curves = chosen.choices.curves;
    QString module = (curves.at(chosen.choices.selectedCurve).*side).module;
    for (int curve = 0; curve < curves.size(); ++curve) {
        SceneSource &source = curves[curve].*side;
        if (module.isEmpty()) {
            module = source.module;
        }
        if (source.isChosen() && source.module != module) {
            chosen.losses.append(
                ChoiceReaderText::tr("curve %1, %2: its page shows the module \"%3\", but all curves share one "
                                     "module per side, which is \"%4\"")
                    .arg(curve + 1)
                    .arg(sideName, source.module, module));
            source = {};
        }
    }
}

} // namespace

ChosenScene readChoices(const QWidget *container)
{
    ChosenScene chosen;
    SceneContainer &choices = chosen.choices;
    if (!PlotterWindow::isPlot(container)) {
        return chosen;
    }
    const auto *const frame = container->findChild<QWidget *>(PlotterWindow::curveFrameName());
    const QList<QRadioButton *> buttons = frame->findChildren<QRadioButton *>();
    const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(container);
    const int curves = qMin(qMin(buttons.size(), boxes.size()), SceneContainer::maximumCurves);
    for (int curve = 0; curve < curves; ++curve) {
        choices.curves.append({readSource(container, curve, Side::X), readSource(container, curve, Side::Y),
                               boxes.at(curve)->isChecked()});
        if (buttons.at(curve)->isChecked()) {
            choices.selectedCurve = curve;
        }
    }
    choices.showsLines = isTicked(container, PlotterWindow::Option::Lines);
    choices.isSquare = isTicked(container, PlotterWindow::Option::Square);
    choices.showsAll = isTicked(container, PlotterWindow::Option::ShowAll);
    if (curves > 0) {
        keepOneModule(&SceneCurve::x, QStringLiteral("X"), chosen);
        keepOneModule(&SceneCurve::y, QStringLiteral("Y"), chosen);
    }
    return chosen;
}
