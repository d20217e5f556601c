#include "setup/SceneRunner.h"
#include "GuardedTest.h"
#include "PlotterWindow.h"
#include "setup/SceneReader.h"
#include "window/MainWindow.h"
#include "window/Workbench.h"

#include "host/ContainerInterface.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QTableView>

using PlotterWindow::Option;
using PlotterWindow::Side;

/// What a scene chooses in the window of the real plugin.
class SceneRunnerTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void sceneSetsWhatItSays()
    {
        Scene scene = readSceneFile(shippedScenePath(QStringLiteral("phase"))).scene;
        SceneCurve second = scene.curves.constFirst();
        qSwap(second.x, second.y);
        second.y.motor = QStringLiteral("Axis 2");
        scene.curves.append(second);
        scene.showsLines = false;
        scene.isSquare = true;
        scene.showsAll = true;

        Workbench workbench(SimulationClock::Drive::Exchanges, 1);
        QCOMPARE(workbench.loadPlugin(PLUGIN), QString());
        QVERIFY(workbench.modules().add(scene.modules.constFirst(), 1));
        MainWindow window(&workbench);
        m_container = window.addContainer();
        window.show();
        window.openContainer(m_container);
        // A window in another language, and with boxes of its own that a scene has to leave alone.
        const QList<QCheckBox *> boxes = m_container->findChildren<QCheckBox *>();
        for (QCheckBox *const box : boxes) {
            box->setToolTip(QStringLiteral("Kästchen"));
        }
        QCOMPARE(SceneRunner(m_container).apply(scene), QString());
        QCOMPARE(chosen(0, Side::X), QStringLiteral("SIM0/Stepper|Axis 0|Actual position [microsteps]|unsigned"));
        QCOMPARE(chosen(0, Side::Y), QStringLiteral("SIM0/Stepper|Register|Axis 0 motion: Actual velocity|signed"));
        QCOMPARE(chosen(1, Side::X), chosen(0, Side::Y));
        QCOMPARE(chosen(1, Side::Y), QStringLiteral("SIM0/Stepper|Axis 2|Actual position [microsteps]|unsigned"));
        QCOMPARE(options(), QVector<bool>({false, true, true}));
        QCOMPARE(recorded(), QVector<bool>({true, true, false, false}));
        const QList<QRadioButton *> selectors = m_container->findChildren<QRadioButton *>();
        QVERIFY(selectors.constFirst()->isChecked()); // the first curve's tables are shown
        QVERIFY(!m_container->findChild<QCheckBox *>(PlotterWindow::logBoxName())->isChecked());

        scene.curves.removeLast();
        scene.showsLines = true;
        scene.isSquare = false;
        scene.showsAll = false;
        QCOMPARE(SceneRunner(m_container).apply(scene), QString());
        QCOMPARE(options(), QVector<bool>({true, false, false}));
        QCOMPARE(recorded(), QVector<bool>({true, false, false, false}));
    }

private:
    /// Module, motor, value and sign of a source as the window shows them.
    QString chosen(int curve, Side side) const
    {
        const PlotterWindow::SelectorPage names = PlotterWindow::selectorPage(curve, side);
        const auto *const table = m_container->findChild<QTableView *>(names.table);
        const QModelIndex current = table->currentIndex();
        const QModelIndex sign = current.sibling(current.row(), PlotterWindow::signColumn);
        return QStringList({m_container->findChild<QComboBox *>(names.modules)->currentText().trimmed(),
                            m_container->findChild<QComboBox *>(names.motors)->currentText().trimmed(),
                            current.sibling(current.row(), PlotterWindow::nameColumn).data().toString().trimmed(),
                            sign.data(Qt::CheckStateRole).toInt() == Qt::Checked ? QStringLiteral("signed")
                                                                                 : QStringLiteral("unsigned")})
            .join(QLatin1Char('|'));
    }

    QVector<bool> options() const
    {
        QVector<bool> states;
        for (const Option option : {Option::Lines, Option::Square, Option::ShowAll}) {
            states.append(m_container->findChild<QCheckBox *>(PlotterWindow::optionBoxName(option))->isChecked());
        }
        return states;
    }

    QVector<bool> recorded() const
    {
        QVector<bool> states;
        const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(m_container);
        for (const QCheckBox *const box : boxes) {
            states.append(box->isChecked());
        }
        return states;
    }

    ContainerInterface *m_container = nullptr; // owned by the workbench of the test function
};

GUARDED_TEST_MAIN(SceneRunnerTest)
#include "SceneRunnerTest.moc"
