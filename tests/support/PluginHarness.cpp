#include "PluginHarness.h"

#include "host/ExportCSV.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace
{

constexpr int refreshIntervalMs = 250;

QString partName(const char *part, int curve, char axis)
{
    return QString::fromLatin1(part) + QString::number(curve) + QStringLiteral("dockWidgetContents") +
           QLatin1Char(axis);
}

} // namespace

bool TimerGate::eventFilter(QObject *watched, QEvent *event)
{
    return (event->type() == QEvent::Timer && !isOpen) || QObject::eventFilter(watched, event);
}

PluginHarness::PluginHarness(ContainerInterface *root, const QString &name)
    : plugin(static_cast<ContainerInterface *>(root->clone(name, &handler)))
{
}

PluginHarness::~PluginHarness()
{
    delete window;
    delete plugin;
}

void PluginHarness::open(const QSize &size)
{
    window = new QDialog;
    auto *const layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    plugin->installEventFilter(&m_gate);
    plugin->setParent(window);
    plugin->init(window);
    layout->addWidget(plugin);
    plugin->show();
    window->resize(size);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(plugin);
    for (const QAbstractEventDispatcher::TimerInfo &timer : timers) {
        (timer.interval == refreshIntervalMs ? m_refreshTimerId : m_sampleTimerId) = timer.timerId;
    }
}

void PluginHarness::close()
{
    window->reject();
    QCoreApplication::sendPostedEvents(window, QEvent::DeferredDelete);
}

void PluginHarness::sampleTick()
{
    deliver(m_sampleTimerId);
}

void PluginHarness::refreshTick()
{
    deliver(m_refreshTimerId);
}

void PluginHarness::deliver(int timerId)
{
    QTimerEvent event(timerId);
    m_gate.isOpen = true;
    QCoreApplication::sendEvent(plugin, &event);
    m_gate.isOpen = false;
}

int PluginHarness::activeTimers() const
{
    return QAbstractEventDispatcher::instance()->registeredTimers(plugin).size();
}

ComboBox *PluginHarness::moduleBox(int curve, char axis) const
{
    return find<ComboBox>(partName("cmbm", curve, axis));
}

ComboBox *PluginHarness::motorBox(int curve, char axis) const
{
    return find<ComboBox>(partName("motor", curve, axis));
}

QTableView *PluginHarness::table(int curve, char axis) const
{
    return find<QTableView>(partName("cmds", curve, axis));
}

QAbstractButton *PluginHarness::curveBox(int curve) const
{
    QList<QAbstractButton *> boxes;
    for (QCheckBox *const box : plot()->findChildren<QCheckBox *>()) {
        if (box->property("ColorName").isValid()) {
            boxes.append(box);
        }
    }
    return boxes.at(curve);
}

QAbstractButton *PluginHarness::showAllBox() const
{
    for (QCheckBox *const box : plot()->findChildren<QCheckBox *>()) {
        if (box->toolTip() == QStringLiteral("Show all data")) {
            return box;
        }
    }
    return nullptr;
}

QAbstractButton *PluginHarness::radioButton(int curve) const
{
    return find<QWidget>(QStringLiteral("RadioButtonFrame"))->findChildren<QRadioButton *>().at(curve);
}

QWidget *PluginHarness::plot() const
{
    const QList<QWidget *> children = find<QWidget>(QStringLiteral("widgetPlot"))->findChildren<QWidget *>();
    for (QWidget *const child : children) {
        if (child->inherits("Plotter")) {
            return child;
        }
    }
    return nullptr;
}

bool PluginHarness::pick(ComboBox *box, const QString &text)
{
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    for (int step = 0; step < box->count(); ++step) {
        if (box->currentText().trimmed() == text) {
            return true;
        }
        QTest::keyClick(box, Qt::Key_Down);
    }
    return box->currentText().trimmed() == text;
}

int PluginHarness::rowOf(const QTableView *table, const QString &name)
{
    const QAbstractItemModel *const model = table->model();
    for (int row = 0; model != nullptr && row < model->rowCount(); ++row) {
        if (model->index(row, 2).data().toString().startsWith(name)) {
            return row;
        }
    }
    return -1;
}

bool PluginHarness::clickCell(QTableView *table, int row, int column)
{
    if (table->model() == nullptr || row < 0 || !table->isVisible()) {
        return false;
    }
    const QModelIndex index = table->model()->index(row, column);
    table->scrollTo(index);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(index).center());
    return table->currentIndex() == index;
}

bool PluginHarness::choose(int curve, char axis, const QString &module, const QString &motor, const QString &value)
{
    radioButton(curve)->click();
    if (!pick(moduleBox(curve, axis), module)) {
        return false;
    }
    if (!motor.isEmpty() && !pick(motorBox(curve, axis), motor)) {
        return false;
    }
    QTableView *const values = table(curve, axis);
    return clickCell(values, rowOf(values, value));
}

QCheckBox *PluginHarness::logBox() const
{
    return find<QCheckBox>(QStringLiteral("cbLog"));
}

void PluginHarness::clickLog(const std::function<void(QFileDialog *)> &answer) const
{
    bool isAnswered = false;
    QTimer::singleShot(0, [&] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        isAnswered = true;
        answer(dialog);
    });
    logBox()->click();
    QVERIFY(isAnswered);
}

void PluginHarness::startLog(const QString &path) const
{
    clickLog([&](QFileDialog *dialog) {
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
    });
}

QStandardItemModel *PluginHarness::exported()
{
    if (auto *const previous = window->findChild<ExportCSV *>(QStringLiteral("ExportXY"))) {
        delete previous;
    }
    QTest::mouseClick(find<QWidget>(QStringLiteral("btnExport")), Qt::LeftButton);
    auto *const shown = window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
    return shown == nullptr ? nullptr : plugin->findChildren<QStandardItemModel *>().constLast();
}

QVector<QPointF> PluginHarness::points(int pair)
{
    QVector<QPointF> found;
    const QStandardItemModel *const model = exported();
    for (int row = 0; row < model->rowCount() && model->item(row, 2 * pair) != nullptr; ++row) {
        found.append(
            {model->item(row, 2 * pair)->text().toDouble(), model->item(row, 2 * pair + 1)->text().toDouble()});
    }
    return found;
}
