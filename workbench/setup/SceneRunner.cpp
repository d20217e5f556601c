#include "setup/SceneRunner.h"

#include "reading/TextLists.h"
#include "setup/MouseClick.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTableView>

namespace
{

struct SceneRunnerText
{
    Q_DECLARE_TR_FUNCTIONS(SceneRunner)
};

/// Gives new and newly shown widgets their places; handles no other event.
void settleLayouts()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

/// The names of a table's rows, without blanks around them.
QStringList namesIn(const QAbstractItemModel *model)
{
    QStringList names;
    for (int row = 0; row < model->rowCount(); ++row) {
        names.append(model->index(row, PlotterWindow::nameColumn).data().toString().trimmed());
    }
    return names;
}

/// The texts of a box's entries, without blanks around them.
QStringList entriesOf(const QComboBox *box)
{
    QStringList entries;
    for (int i = 0; i < box->count(); ++i) {
        entries.append(box->itemText(i).trimmed());
    }
    return entries;
}

/// The middle of the part of the cell that can be seen.
QPoint middleOf(const QTableView *table, const QModelIndex &index)
{
    const QRect cell = table->visualRect(index);
    const QRect seen = cell.intersected(table->viewport()->rect());
    return seen.isEmpty() ? cell.center() : seen.center();
}

/// The middle of the cell's check box, as the style places it.
QPoint checkBoxOf(const QTableView *table, const QModelIndex &index)
{
    QStyleOptionViewItem option;
    option.initFrom(table);
    option.widget = table;
    option.rect = table->visualRect(index);
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    option.text = index.data().toString();
    return table->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, table).center();
}

} // namespace

SceneRunner::SceneRunner(QWidget *container) : m_container(container) {}

QString SceneRunner::apply(const SceneContainer &scene)
{
    m_errors.clear();
    for (int curve = 0; curve < scene.curves.size(); ++curve) {
        chooseCurve(curve);
        chooseSource(curve, PlotterWindow::Side::X, scene.curves.at(curve).x);
        chooseSource(curve, PlotterWindow::Side::Y, scene.curves.at(curve).y);
    }
    if (!scene.curves.isEmpty()) {
        chooseCurve(scene.selectedCurve);
        setCurveBoxes(scene.curves);
        setOption(PlotterWindow::Option::Lines, scene.showsLines);
        setOption(PlotterWindow::Option::Square, scene.isSquare);
        setOption(PlotterWindow::Option::ShowAll, scene.showsAll);
    }
    return m_errors.value(0);
}

QStringList SceneRunner::errors() const
{
    return m_errors;
}

void SceneRunner::chooseCurve(int curve)
{
    const QWidget *const frame = find<QWidget>(m_container, PlotterWindow::curveFrameName());
    if (frame == nullptr) {
        return;
    }
    const QList<QRadioButton *> buttons = frame->findChildren<QRadioButton *>();
    if (curve >= buttons.size()) {
        fail(SceneRunnerText::tr("the plot window has %1 curves, the set-up needs more").arg(buttons.size()));
        return;
    }
    buttons.at(curve)->click();
    settleLayouts();
}

void SceneRunner::chooseSource(int curve, PlotterWindow::Side side, const SceneSource &source)
{
    if (!source.isChosen()) {
        return;
    }
    m_place = SceneRunnerText::tr("curve %1, %2: ")
                  .arg(curve + 1)
                  .arg(QLatin1Char(side == PlotterWindow::Side::X ? 'X' : 'Y'));
    const PlotterWindow::SelectorPage names = PlotterWindow::selectorPage(curve, side);
    const QWidget *const stack = find<QStackedWidget>(m_container, names.stack);
    const QWidget *const page = stack == nullptr ? nullptr : find<QWidget>(stack, names.page);
    auto *const modules = page == nullptr ? nullptr : find<QComboBox>(page, names.modules);
    const int entry = modules == nullptr ? -1 : entriesOf(modules).indexOf(source.module);
    if (modules != nullptr && entry < 0) {
        fail(SceneRunnerText::tr("the module \"%1\" is not offered, only: %2")
                 .arg(source.module, quotedList(entriesOf(modules))));
    }
    if (entry >= 0) {
        modules->setCurrentIndex(entry);
        const bool hasMotor = chooseMotor(find<QComboBox>(page, names.motors), source);
        settleLayouts();
        auto *const table = find<QTableView>(page, names.table);
        if (hasMotor && table != nullptr) {
            chooseRow(table, source);
        }
    }
    m_place.clear();
}

/// Returns whether the table now is that of the motor.
bool SceneRunner::chooseMotor(QComboBox *motors, const SceneSource &source)
{
    if (motors == nullptr || (motors->isHidden() && source.motor.isEmpty())) {
        return true; // a module without a choice of motors shows its table at once
    }
    const int entry = motors->isHidden() ? -1 : entriesOf(motors).indexOf(source.motor);
    if (entry < 0) {
        fail(SceneRunnerText::tr("the module \"%1\" has no motor \"%2\", only: %3")
                 .arg(source.module, source.motor,
                      motors->isHidden() ? QStringLiteral("\"\"") : quotedList(entriesOf(motors))));
        return false;
    }
    motors->setCurrentIndex(entry);
    return true;
}

void SceneRunner::chooseRow(QTableView *table, const SceneSource &source)
{
    const QAbstractItemModel *const model = table->model();
    const QStringList names = model == nullptr || table->isHidden() ? QStringList() : namesIn(model);
    const int row = names.indexOf(source.value);
    if (model == nullptr || row < 0) {
        const QString nearest = quotedList(nearestTexts(source.value, names));
        fail(source.motor.isEmpty()
                 ? SceneRunnerText::tr("the module \"%1\" has no value \"%2\"; the nearest are: %3")
                       .arg(source.module, source.value, nearest)
                 : SceneRunnerText::tr(
                       "the module \"%1\" has no value \"%2\" under its motor \"%3\"; the nearest are: %4")
                       .arg(source.module, source.value, source.motor, nearest));
        return;
    }
    table->scrollTo(model->index(row, PlotterWindow::nameColumn));
    MouseClick::at(table->viewport(), middleOf(table, model->index(row, PlotterWindow::nameColumn)));
    if (table->currentIndex().row() != row) {
        fail(SceneRunnerText::tr("the click on \"%1\" did not choose it").arg(source.value));
    }
    const QModelIndex box = model->index(row, PlotterWindow::signColumn);
    const auto isTicked = [&box] { return box.data(Qt::CheckStateRole).toInt() == Qt::Checked; };
    if (isTicked() == source.isSigned) {
        return;
    }
    table->scrollTo(box);
    MouseClick::at(table->viewport(), checkBoxOf(table, box));
    if (isTicked() != source.isSigned) {
        fail(SceneRunnerText::tr("the value \"%1\" cannot be read as signed").arg(source.value));
    }
}

void SceneRunner::setCurveBoxes(const QList<SceneCurve> &curves)
{
    const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(m_container);
    for (int curve = 0; curve < boxes.size(); ++curve) {
        const bool isOn = curve < curves.size() && curves.at(curve).isOn;
        if (boxes.at(curve)->isChecked() != isOn) {
            boxes.at(curve)->click();
        }
    }
    if (boxes.size() < curves.size()) {
        fail(SceneRunnerText::tr("the plot has boxes for %1 curves, the set-up needs %2")
                 .arg(boxes.size())
                 .arg(curves.size()));
    }
}

void SceneRunner::setOption(PlotterWindow::Option option, bool isOn)
{
    auto *const box = find<QCheckBox>(m_container, PlotterWindow::optionBoxName(option));
    if (box != nullptr && box->isChecked() != isOn) {
        box->click();
    }
}

void SceneRunner::fail(const QString &problem)
{
    const QString line = m_place + problem;
    if (!m_errors.contains(line)) { // a missing widget is looked for again and again
        m_errors.append(line);
    }
}

template<typename Widget> Widget *SceneRunner::find(const QWidget *parent, const QString &name)
{
    auto *const widget = parent->findChild<Widget *>(name);
    if (widget == nullptr) {
        fail(SceneRunnerText::tr("the container has no %1 called \"%2\", which a set-up needs")
                 .arg(QString::fromLatin1(Widget::staticMetaObject.className()), name));
    }
    return widget;
}
