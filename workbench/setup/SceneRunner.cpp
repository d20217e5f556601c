#include "setup/SceneRunner.h"

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

constexpr int checkColumn = 1;
constexpr int nameColumn = 2;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SceneRunner)
};

/// Gives new and newly shown widgets their places; handles no other event.
void settleLayouts()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

/// The row whose last column bears \a name, blanks around it left aside; -1 when there is none.
int rowOf(const QAbstractItemModel *model, const QString &name)
{
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->index(row, nameColumn).data().toString().trimmed() == name) {
            return row;
        }
    }
    return -1;
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

/// The entry of \a box that reads \a text, blanks around it left aside; -1 when there is none.
int entryOf(const QComboBox *box, const QString &text)
{
    for (int i = 0; i < box->count(); ++i) {
        if (box->itemText(i).trimmed() == text) {
            return i;
        }
    }
    return -1;
}

QString entriesOf(const QComboBox *box)
{
    QStringList entries;
    for (int i = 0; i < box->count(); ++i) {
        entries.append(QLatin1Char('"') + box->itemText(i).trimmed() + QLatin1Char('"'));
    }
    return entries.join(QStringLiteral(", "));
}

} // namespace

SceneRunner::SceneRunner(QWidget *container) : m_container(container) {}

QString SceneRunner::apply(const Scene &scene)
{
    m_error.clear();
    for (int curve = 0; curve < scene.curves.size(); ++curve) {
        chooseCurve(curve);
        chooseSource(curve, QStringLiteral("X"), scene.curves.at(curve).x);
        chooseSource(curve, QStringLiteral("Y"), scene.curves.at(curve).y);
    }
    if (!scene.curves.isEmpty()) {
        chooseCurve(0);
        setCurvesRecorded(scene.curves.size());
        setPlotOption(QStringLiteral("Show a line between recorded dots"), scene.showsLines);
        setPlotOption(QStringLiteral("Show width as height"), scene.isSquare);
        setPlotOption(QStringLiteral("Show all data"), scene.showsAll);
    }
    return m_error;
}

void SceneRunner::chooseCurve(int curve)
{
    const QWidget *const frame = find<QWidget>(m_container, QStringLiteral("RadioButtonFrame"));
    if (frame == nullptr) {
        return;
    }
    const QList<QRadioButton *> buttons = frame->findChildren<QRadioButton *>();
    if (curve >= buttons.size()) {
        fail(Text::tr("the plot window has %1 curves, the scene needs more").arg(buttons.size()));
        return;
    }
    buttons.at(curve)->click();
    settleLayouts();
}

void SceneRunner::chooseSource(int curve, const QString &side, const SceneSource &source)
{
    const QString stackName = QStringLiteral("dockWidgetContents") + side;
    const QString suffix = QString::number(curve) + stackName;
    const QWidget *const stack = find<QStackedWidget>(m_container, stackName);
    QWidget *const page = stack == nullptr ? nullptr : find<QWidget>(stack, QStringLiteral("page") + suffix);
    auto *const modules = page == nullptr ? nullptr : find<QComboBox>(page, QStringLiteral("cmbm") + suffix);
    if (modules == nullptr) {
        return;
    }
    const int entry = entryOf(modules, source.module);
    if (entry < 0) {
        fail(Text::tr("the module \"%1\" is not offered, only: %2").arg(source.module, entriesOf(modules)));
        return;
    }
    modules->setCurrentIndex(entry);
    chooseMotor(page, suffix, source);
    settleLayouts();
    if (auto *const table = find<QTableView>(page, QStringLiteral("cmds") + suffix)) {
        chooseRow(table, source);
    }
}

void SceneRunner::chooseMotor(QWidget *page, const QString &suffix, const SceneSource &source)
{
    auto *const motors = find<QComboBox>(page, QStringLiteral("motor") + suffix);
    if (motors == nullptr || (motors->isHidden() && source.motor.isEmpty())) {
        return; // a module without a choice of motors shows its table at once
    }
    const int entry = motors->isHidden() ? -1 : entryOf(motors, source.motor);
    if (entry < 0) {
        fail(Text::tr("the module \"%1\" has no motor \"%2\", only: %3")
                 .arg(source.module, source.motor, motors->isHidden() ? QStringLiteral("\"\"") : entriesOf(motors)));
        return;
    }
    motors->setCurrentIndex(entry);
}

void SceneRunner::chooseRow(QTableView *table, const SceneSource &source)
{
    if (!m_error.isEmpty()) {
        return;
    }
    const QAbstractItemModel *const model = table->model();
    const int row = model == nullptr || table->isHidden() ? -1 : rowOf(model, source.value);
    if (row < 0) {
        fail(Text::tr("the module \"%1\" has no value \"%2\" under its motor \"%3\"")
                 .arg(source.module, source.value, source.motor));
        return;
    }
    table->scrollTo(model->index(row, nameColumn));
    MouseClick::at(table->viewport(), middleOf(table, model->index(row, nameColumn)));
    if (table->currentIndex().row() != row) {
        fail(Text::tr("the click on \"%1\" did not choose it").arg(source.value));
    }
    const QModelIndex box = model->index(row, checkColumn);
    if (!source.isSigned || box.data(Qt::CheckStateRole).toInt() == Qt::Checked) {
        return;
    }
    table->scrollTo(box);
    MouseClick::at(table->viewport(), checkBoxOf(table, box));
    if (box.data(Qt::CheckStateRole).toInt() != Qt::Checked) {
        fail(Text::tr("the value \"%1\" cannot be read as signed").arg(source.value));
    }
}

void SceneRunner::setCurvesRecorded(int count)
{
    int curve = 0;
    const QList<QCheckBox *> boxes = m_container->findChildren<QCheckBox *>();
    for (QCheckBox *const box : boxes) {
        if (!box->property("ColorName").isValid()) {
            continue;
        }
        if (box->isChecked() != (curve < count)) {
            box->click();
        }
        ++curve;
    }
    if (curve < count) {
        fail(Text::tr("the plot has boxes for %1 curves, the scene needs %2").arg(curve).arg(count));
    }
}

void SceneRunner::setPlotOption(const QString &toolTip, bool isOn)
{
    const QList<QCheckBox *> boxes = m_container->findChildren<QCheckBox *>();
    for (QCheckBox *const box : boxes) {
        if (box->toolTip() == toolTip) {
            if (box->isChecked() != isOn) {
                box->click();
            }
            return;
        }
    }
    fail(Text::tr("the plot window has no box \"%1\"").arg(toolTip));
}

void SceneRunner::fail(const QString &problem)
{
    if (m_error.isEmpty()) {
        m_error = problem;
    }
}

template<typename Widget> Widget *SceneRunner::find(const QWidget *parent, const QString &name)
{
    auto *const widget = parent->findChild<Widget *>(name);
    if (widget == nullptr) {
        fail(Text::tr("the container has no %1 called \"%2\", which a scene needs")
                 .arg(QString::fromLatin1(Widget::staticMetaObject.className()), name));
    }
    return widget;
}
