#include "GrowingPlot.h"
#include "modules/recording/RecordedModule.h"
#include "window/PlaybackRow.h"
#include "window/RecordingOpener.h"

namespace
{

Scene emptyPlot()
{
    Scene scene;
    scene.modules = {{"SIM0/Stepper", SimulationSettings{"stepper-3"}}};
    return scene;
}

/// The main window with the real plugin, one simulated module, and an empty plot.
struct PlaybackBench : GrowingPlot
{
    PlaybackBench() : GrowingPlot(emptyPlot()) {}

    RecordedModule *module() const
    {
        return workbench.modules().moduleAs<RecordedModule>(1);
    }

    /// Module and motor of X of a curve, and the names of X and Y.
    static QStringList chosen(const QWidget *container, int curve)
    {
        const auto x = PlotterWindow::selectorPage(curve, PlotterWindow::Side::X);
        const auto y = PlotterWindow::selectorPage(curve, PlotterWindow::Side::Y);
        const QWidget *const box = PlotterWindow::curveBoxes(container).at(curve);
        return {container->findChild<QComboBox *>(x.modules)->currentText().trimmed(),
                container->findChild<QComboBox *>(x.motors)->currentText().trimmed(),
                box->property("dpNameX").toString().trimmed(), box->property("dpNameY").toString().trimmed()};
    }

    QStringList labels() const
    {
        return labelsIn(window->findChild<PlaybackRow *>());
    }

    RecordingOpener *const opener = window->findChild<RecordingOpener *>();
};

} // namespace

/// Recordings in the main window: how they are opened, and what their row in the module panel does.
class PlaybackTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void curvesOfALogComeIntoTheEmptyPlot()
    {
        PlaybackBench bench;
        const QString path = log(3000);
        QCOMPARE(bench.opener->open(path), QString());
        QCOMPARE(bench.workbench.containers().size(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(bench.module() != nullptr && bench.module()->row() > 2, maximumWaitMs);
        QCOMPARE(bench.chosen(bench.container, 0), QStringList({"REC0/run", "Axis 0", "pos [raw]", "speed"}));
        QCOMPARE(bench.chosen(bench.container, 1), QStringList({"REC0/run", "Axis 1", "pos [raw]", "current [mA]"}));
        const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(bench.container);
        QVERIFY(boxes.at(0)->isChecked() && boxes.at(1)->isChecked() && !boxes.at(2)->isChecked());

        // The plot has curves now: the next one gets a plot of its own, and its module a key of its own.
        QCOMPARE(bench.opener->open(path), QString());
        QCOMPARE(bench.workbench.containers().size(), 2);
        QTRY_COMPARE_WITH_TIMEOUT(bench.chosen(bench.workbench.containers().at(1), 0).constFirst(), QString("REC1/run"),
                                  maximumWaitMs);
    }

    /// The plot window switches its sources off for every module that comes.
    void plotsOfOtherModulesGoOn()
    {
        PlaybackBench bench;
        const SceneSource live{"SIM0/Stepper", "Axis 1", "Actual position [microsteps]", false};
        SceneContainer choices;
        choices.curves = {{live, live, true}};
        bench.choose(choices);
        const QStringList before = bench.chosen(bench.container, 0);
        QCOMPARE(bench.opener->open(log(3000)), QString());
        QTRY_VERIFY_WITH_TIMEOUT(bench.module()->row() > 2, maximumWaitMs); // in a window of its own
        QCOMPARE(bench.workbench.containers().size(), 2);
        QCOMPARE(bench.chosen(bench.container, 0), before);
        bench.window->openContainer(bench.container);
        const quint64 answered = bench.modules().statistics(0)->requests;
        QTRY_VERIFY_WITH_TIMEOUT(bench.modules().statistics(0)->requests > answered + 3, maximumWaitMs);
    }

    void columnsOfOtherFilesAreShownOverTheFirst()
    {
        PlaybackBench bench;
        QCOMPARE(bench.opener->open(written("run.csv", "t;a;b\n1;2;3\n2;3;4\n")), QString());
        QTRY_COMPARE_WITH_TIMEOUT(bench.chosen(bench.container, 1), QStringList({"REC0/run", "", "t", "b"}),
                                  maximumWaitMs);
        QCOMPARE(bench.chosen(bench.container, 0), QStringList({"REC0/run", "", "t", "a"}));
    }

    void badFileChangesNothing()
    {
        PlaybackBench bench;
        const QString problem = bench.opener->open(written("run.csv", "t;a\n1;off\nx;2\n"));
        QVERIFY2(problem.contains("line 3, column 1: expected a number, found \"x\""), qPrintable(problem));
        QCOMPARE(bench.modules().count(), 1);
        QCOMPARE(bench.workbench.containers().size(), 1);
    }

    void rowPlaysPausesAndMoves()
    {
        PlaybackBench bench;
        QCOMPARE(bench.opener->open(log(6000)), QString());
        QTRY_VERIFY_WITH_TIMEOUT(bench.module()->row() > 2, maximumWaitMs);
        auto *const play = partNamed<QPushButton>(*bench.window, "REC0/run: Pause");
        QTest::keyClick(play, Qt::Key_Space);
        QCOMPARE(play->text(), QString("Play"));
        QVERIFY(!bench.modules().recording(1)->isPlaying);
        const int row = bench.module()->row();
        QTest::keyClick(partNamed<QToolButton>(*bench.window, "REC0/run: One row on"), Qt::Key_Space);
        QTest::qWait(100);
        QCOMPARE(bench.module()->row(), row + 1);
        QTest::keyClick(partNamed<QToolButton>(*bench.window, "REC0/run: One row back"), Qt::Key_Space);
        QCOMPARE(bench.module()->row(), row);
        auto *const slider = partNamed<QSlider>(*bench.window, "REC0/run: position");
        QTest::keyClick(slider, Qt::Key_End);
        QCOMPARE(bench.module()->row(), 5999);
        QVERIFY(bench.labels().contains("Row 6,000 of 6,000\n1:23.9 of 1:23.9"));
        QTest::keyClick(slider, Qt::Key_PageDown);
        QCOMPARE(bench.module()->row(), 5399);
        QTest::keyClick(slider, Qt::Key_Home);
        QCOMPARE(bench.module()->row(), 0);

        slider->setValue(1000);
        partNamed<QPushButton>(*bench.window, "REC0/run: close")->setFocus();
        const QPointF centre = slider->rect().center();
        QWheelEvent wheel(centre, slider->mapToGlobal(centre.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(slider, &wheel); // scrolls the list of modules only
        QCOMPARE(bench.module()->row(), 1000);

        auto *const speed = partNamed<QComboBox>(*bench.window, "REC0/run: speed");
        QTest::keyClick(speed, Qt::Key_End);
        QCOMPARE(bench.module()->playback().speedTenths(), 1000);
        play->click();
        QTRY_VERIFY_WITH_TIMEOUT(bench.module()->playback().isAtEnd(), maximumWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(bench.labels().contains("Row 6,000 of 6,000\n1:23.9 of 1:23.9, ended"), maximumWaitMs);
        QTest::keyClick(partNamed<QCheckBox>(*bench.window, "REC0/run: Repeat"), Qt::Key_Space);
        QVERIFY(bench.module()->playback().isAtEnd()); // it repeats when it is played again
        QVERIFY(bench.modules().recording(1)->isRepeated && bench.module()->playback().isRepeated());
    }

    void takenOutItKeepsItsSettings()
    {
        PlaybackBench bench;
        QCOMPARE(bench.opener->open(log(3000)), QString());
        bench.modules().setPlayback(1, {QString(), QString(), false, true, 25});
        bench.modules().setPluggedIn(1, false);
        QVERIFY(!partNamed<QSlider>(*bench.window, "REC0/run: position")->isEnabled());
        bench.modules().setPluggedIn(1, true);
        const Playback &playback = bench.module()->playback();
        QVERIFY(playback.isRepeated() && !playback.isPlaying() && playback.speedTenths() == 25);
        QVERIFY(partNamed<QComboBox>(*bench.window, "REC0/run: speed")->currentText().startsWith("2.5"));
    }

    void troubleWithTheFileIsShown()
    {
        PlaybackBench bench;
        const QString path = log(3000);
        QCOMPARE(bench.opener->open(path), QString());
        QVERIFY(QFile::remove(path));
        const auto hasTrouble = [&] { return !bench.labels().filter("run.csv was removed").isEmpty(); };
        QTRY_VERIFY_WITH_TIMEOUT(hasTrouble(), maximumWaitMs);
        const int row = bench.module()->row();
        QTRY_VERIFY_WITH_TIMEOUT(bench.module()->row() > row, maximumWaitMs);
    }

    /// The rows of the panel are destroyed later than their places, when the event loop runs.
    void rowsOutliveTheirPlaces()
    {
        PlaybackBench bench;
        QCOMPARE(bench.opener->open(log(30)), QString());
        QCOMPARE(bench.opener->open(log(30)), QString());
        ModuleRack &rack = bench.modules();
        rack.remove(2);
        rack.remove(1);
        QCOMPARE(rack.add({"SIM1/Servo", SimulationSettings{"servo-1"}}), QString());
        rack.setMoving(0, false);
        QCOMPARE(bench.window->findChildren<PlaybackRow *>().size(), 0);
        QTest::qWait(300); // as long as a row takes to look again
    }

    void besideAModuleAndClosed()
    {
        PlaybackBench bench;
        QCOMPARE(bench.opener->open(log(3000)), QString());
        auto *const beside = partNamed<QComboBox>(*bench.window, "REC0/run: beside which module");
        QCOMPARE(beside->count(), 2); // by itself, or beside the stepper
        QTest::keyClick(beside, Qt::Key_Down);
        QCOMPARE(bench.modules().recording(1)->beside, QString("SIM0/Stepper"));
        QCOMPARE(bench.module()->numberOfAxes(), 3 + 2);
        QCOMPARE(partNamed<QComboBox>(*bench.window, "REC0/run: beside which module")->currentText(),
                 QString("Beside SIM0/Stepper"));
        partNamed<QPushButton>(*bench.window, "REC0/run: close")->click();
        QCOMPARE(bench.modules().count(), 1);
        QCOMPARE(bench.window->findChildren<PlaybackRow *>().size(), 0);
    }

private:
    QString log(int rows) const
    {
        QByteArray bytes = "Module:;M1;M1;M2;M2;\r\nCounter;pos [raw];speed;pos [raw];current [mA];\r\n";
        for (int row = 1; row <= rows; ++row) {
            bytes += QString("%1;%1;2;3;%1;\r\n").arg(row).toLatin1();
        }
        return written("run.csv", bytes);
    }
};

GUARDED_TEST(PlaybackTest)
#include "PlaybackTest.moc"
