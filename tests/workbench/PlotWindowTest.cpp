#include "GrowingPlot.h"

using PlotterWindow::Option;
using PlotterWindow::Side;

namespace
{

constexpr int maximumSteps = 300;

/// Whether the Tab key has to reach this widget. A window of the workspace hands the focus on to what is in it; of a
/// group of radio buttons only the chosen one is a stop. Check boxes always are: Qt clears their policy in a group.
bool isTabStop(const QWidget *widget)
{
    const bool takesTab =
        (widget->focusPolicy() & Qt::TabFocus) != 0 || qobject_cast<const QCheckBox *>(widget) != nullptr;
    if (!widget->isVisible() || !widget->isEnabled() || !takesTab || widget->focusProxy() != nullptr ||
        widget->isWindow() || qobject_cast<const QMdiSubWindow *>(widget) != nullptr) {
        return false;
    }
    const auto *const radioButton = qobject_cast<const QRadioButton *>(widget);
    return radioButton == nullptr || radioButton->isChecked();
}

} // namespace

/// The main window with the real plugin: what a scene sets, the status bar, and the keyboard.
class PlotWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void sceneSetsWhatItSays()
    {
        Scene scene = readSceneFile(shippedScenePath("phase")).scene;
        SceneCurve second = scene.curves.constFirst();
        qSwap(second.x, second.y);
        second.y.motor = "Axis 2";
        scene.curves.append(second);
        scene.showsLines = false;
        scene.isSquare = true;
        scene.showsAll = true;
        const GrowingPlot plot(scene);
        QCOMPARE(chosen(plot, 0, Side::X), QString("SIM0/Stepper|Axis 0|Actual position [microsteps]|0"));
        QCOMPARE(chosen(plot, 0, Side::Y), QString("SIM0/Stepper|Register|Axis 0 motion: Actual velocity|2"));
        QCOMPARE(chosen(plot, 1, Side::X), chosen(plot, 0, Side::Y));
        QCOMPARE(chosen(plot, 1, Side::Y), QString("SIM0/Stepper|Axis 2|Actual position [microsteps]|0"));
        QCOMPARE(checkedBoxes(plot), QString("curves 1100, options 011"));
        QVERIFY(plot.container->findChildren<QRadioButton *>().constFirst()->isChecked()); // its tables are shown
        QVERIFY(!plot.watch->box()->isChecked());

        scene.curves.removeLast();
        scene.showsLines = true;
        scene.isSquare = false;
        scene.showsAll = false;
        plot.choose(scene);
        QCOMPARE(checkedBoxes(plot), QString("curves 1000, options 100"));
        scene.curves[0].x.value = "Actual position";
        const QString error = SceneRunner(plot.container).apply(scene);
        QVERIFY2(error.contains("nearest are: \"Actual position [microsteps]\""), qPrintable(error));
    }

    void statusBarStaysShort()
    {
        Scene scene = readSceneFile(shippedScenePath("two-modules")).scene;
        const QString longKey = QString("SIM9/") + QString(200, 'w');
        scene.modules[1].key = longKey;
        scene.curves[0].y.module = longKey;
        GrowingPlot plot(scene);
        QVERIFY(!plot.answersLabel()->font().bold());
        plot.recordLines(temporaryPath("run.csv"));
        plot.modules().setSilent(1, true);
        QTRY_VERIFY_WITH_TIMEOUT(plot.answersLabel()->text().contains("not answering: SIM9"), maximumWaitMs);
        QVERIFY(plot.answersLabel()->font().bold());
        int width = 0;
        for (const QLabel *const label : partsOf<QLabel>(*plot.window->statusBar())) {
            width += label->sizeHint().width();
        }
        QVERIFY2(width < 1200, qPrintable(QString::number(width))); // of a window of the usual size
        plot.modules().setSilent(0, true);
        QTRY_VERIFY_WITH_TIMEOUT(plot.answersLabel()->text().endsWith("not answering: 2"), maximumWaitMs);
        const QStringList tip = plot.answersLabel()->toolTip().split('\n');
        QVERIFY2(tip.size() == 2 && tip.at(0).endsWith("SIM0/Stepper are old ones") && tip.at(1).contains(longKey),
                 qPrintable(tip.join('|')));
    }

    /// For people who use the keyboard or have the screen read to them.
    void tabReachesEverythingAndEverythingHasAName()
    {
        const GrowingPlot plot;
        MainWindow &window = *plot.window;
        window.resize(1200, 800);
        plot.dock("module")->show();
        window.showHint();
        QApplication::setActiveWindow(&window);

        // Forwards: to the next stop, not to the one before.
        QCheckBox *const box = plot.curveBox(0);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Tab);
        const QWidget *next = box->nextInFocusChain();
        while (!isTabStop(next)) {
            next = next->nextInFocusChain();
        }
        QCOMPARE(QApplication::focusWidget(), next);

        QSet<QWidget *> reached;
        for (const char *const panel : {"message", "recording", "exchange"}) {
            plot.raisedDock(panel);
            QCoreApplication::processEvents();
            for (int step = 0; step < maximumSteps; ++step) {
                QWidget *const focused = QApplication::focusWidget();
                QTest::keyClick(focused == nullptr ? &window : focused, Qt::Key_Tab);
                reached.insert(QApplication::focusWidget());
            }
            for (QWidget *const widget : partsOf<QWidget>(window)) {
                if (isTabStop(widget)) {
                    const QString what = widget->metaObject()->className() + QLatin1Char(' ') + widget->objectName();
                    QVERIFY2(reached.contains(widget), qPrintable(what));
                    QAccessibleInterface *const spoken = QAccessible::queryAccessibleInterface(widget);
                    QVERIFY2(!spoken->text(QAccessible::Name).trimmed().isEmpty(), qPrintable(what));
                }
            }
        }
        QVERIFY(reached.size() > 25);
    }

private:
    /// Module, motor, value and check state of the sign of a source, as the window shows them.
    static QString chosen(const GrowingPlot &plot, int curve, Side side)
    {
        const PlotterWindow::SelectorPage names = PlotterWindow::selectorPage(curve, side);
        const QModelIndex current = plot.container->findChild<QTableView *>(names.table)->currentIndex();
        const auto cell = [&current](int column) { return current.sibling(current.row(), column); };
        return QStringList({plot.container->findChild<QComboBox *>(names.modules)->currentText().trimmed(),
                            plot.container->findChild<QComboBox *>(names.motors)->currentText().trimmed(),
                            cell(PlotterWindow::nameColumn).data().toString().trimmed(),
                            QString::number(cell(PlotterWindow::signColumn).data(Qt::CheckStateRole).toInt())})
            .join('|');
    }

    static QString checkedBoxes(const GrowingPlot &plot)
    {
        QString text = "curves ";
        const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(plot.container);
        for (const QCheckBox *const box : boxes) {
            text += QString::number(int(box->isChecked()));
        }
        text += ", options ";
        for (const Option option : {Option::Lines, Option::Square, Option::ShowAll}) {
            const QString name = PlotterWindow::optionBoxName(option);
            text += QString::number(int(plot.container->findChild<QCheckBox *>(name)->isChecked()));
        }
        return text;
    }
};

GUARDED_TEST(PlotWindowTest)
#include "PlotWindowTest.moc"
