#include "PluginHarness.h"

#include "GuardedTest.h"

#include "host/ExportCSV.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFileDialog>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int refreshIntervalMs = 250;

} // namespace

PluginHarness::PluginHarness(ContainerInterface *root, const QString &name)
    : plugin(static_cast<ContainerInterface *>(root->clone(name, &handler)))
{
}

PluginHarness::~PluginHarness()
{
    delete window;
    delete plugin;
}

void PluginHarness::open()
{
    window = new QDialog;
    auto *const layout = new QVBoxLayout(window);
    plugin->installEventFilter(this);
    plugin->setParent(window);
    plugin->init(window);
    layout->addWidget(plugin);
    plugin->show();
    window->resize(900, 600);
    window->show();
    REQUIRE(QTest::qWaitForWindowExposed(window));
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

void PluginHarness::deliver(int timerId)
{
    QTimerEvent event(timerId);
    m_isDelivering = true;
    QCoreApplication::sendEvent(plugin, &event);
    m_isDelivering = false;
}

bool PluginHarness::eventFilter(QObject *watched, QEvent *event)
{
    return (event->type() == QEvent::Timer && !m_isDelivering) || QObject::eventFilter(watched, event);
}

int PluginHarness::activeTimers() const
{
    return QAbstractEventDispatcher::instance()->registeredTimers(plugin).size();
}

QString PluginHarness::partName(const char *part, int curve, char axis)
{
    return QStringLiteral("%1%2dockWidgetContents%3").arg(QLatin1String(part)).arg(curve).arg(QLatin1Char(axis));
}

QAbstractButton *PluginHarness::button(const QString &accessibleName) const
{
    const QList<QAbstractButton *> buttons = plugin->findChildren<QAbstractButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const QAbstractButton *button) {
        return button->accessibleName() == accessibleName;
    });
    REQUIRE(found != buttons.end());
    return *found;
}

QWidget *PluginHarness::plot() const
{
    return find(QStringLiteral("widgetPlot"))->layout()->itemAt(1)->widget();
}

bool PluginHarness::isCurveAt(QPointF point, QRectF range) const
{
    const double width = plot()->width() - 101;
    const double height = plot()->height() - 101;
    const double pixelX = 50 + (point.x() - range.left()) * width / range.width();
    const double pixelY = plot()->height() - 41 - (point.y() - range.top()) * height / range.height();
    const QColor color = plot()->grab().toImage().pixelColor(qRound(pixelX), qRound(pixelY));
    return color.red() > color.green() + 60 && color.red() > color.blue() + 40;
}

bool PluginHarness::pick(ComboBox *box, const QString &text)
{
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    for (int step = 1; step < box->count() && box->currentText().trimmed() != text; ++step) {
        QTest::keyClick(box, Qt::Key_Down);
    }
    return box->currentText().trimmed() == text;
}

int PluginHarness::rowOf(const QTableView *table, const QString &name)
{
    const QAbstractItemModel *const model = table->model();
    if (model == nullptr) {
        return -1;
    }
    const QModelIndexList found = model->match(model->index(0, 2), Qt::DisplayRole, name, 1, Qt::MatchStartsWith);
    return found.isEmpty() ? -1 : found.constFirst().row();
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
    QTableView *const values = table(curve, axis);
    return pick(moduleBox(curve, axis), module) && (motor.isEmpty() || pick(motorBox(curve, axis), motor)) &&
           clickCell(values, rowOf(values, value));
}

void PluginHarness::clickLog(const std::function<void(QFileDialog *)> &answer) const
{
    bool isAnswered = false;
    QTimer::singleShot(0, qApp, [&] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        REQUIRE(dialog != nullptr);
        isAnswered = true;
        answer(dialog);
    });
    logBox()->click();
    REQUIRE(isAnswered);
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
    delete window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
    QTest::mouseClick(find(QStringLiteral("btnExport")), Qt::LeftButton);
    auto *const shown = window->findChild<ExportCSV *>(QStringLiteral("ExportXY"));
    return shown == nullptr ? nullptr : plugin->findChildren<QStandardItemModel *>().constLast();
}

QVector<QPointF> PluginHarness::points(int pair)
{
    QVector<QPointF> found;
    const QStandardItemModel *const model = exported();
    REQUIRE(model != nullptr);
    for (int row = 0; row < model->rowCount() && model->item(row, 2 * pair) != nullptr; ++row) {
        found.append(
            {model->item(row, 2 * pair)->text().toDouble(), model->item(row, 2 * pair + 1)->text().toDouble()});
    }
    return found;
}
