#include "GrowingPlot.h"
#include "Paper.h"
#include "application/RecordingDriver.h"
#include "application/WorkbenchRun.h"
#include "window/HintBar.h"
#include "window/ModulePanel.h"

#include <csignal>
#include <sys/resource.h>

/// The state of recordings, as the panel, the status bar and the messages show it.
class RecordingsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void linesAreCountedWhenTheyAreWhole()
    {
        LogFollower follower(temporaryPath("run.csv"));
        follower.poll();
        QVERIFY(!follower.isThere() && follower.isRegular() && !follower.wasReplaced());
        append("Module:;A;A;\r\nCounter;x;y;\r\n");
        follower.poll();
        QVERIFY(follower.isThere() && follower.hasHeader() && !follower.lastLineTime().isValid());
        QCOMPARE(follower.dataLines(), 0);
        append("1;2;3;\r\n2;");
        follower.poll();
        QCOMPARE(follower.dataLines(), 1);
        const QDateTime first = follower.lastLineTime();
        QVERIFY(qAbs(first.msecsTo(QDateTime::currentDateTime())) < 10000);
        append(QByteArray("4;5;\r\n") + "3;6;7;\r\n");
        follower.poll();
        QCOMPARE(follower.dataLines(), 3);
        QCOMPARE(follower.bytes(), QFileInfo(follower.path()).size());
        const QDateTime last = follower.lastLineTime();
        follower.poll();
        QCOMPARE(follower.lastLineTime(), last); // no line came
        QVERIFY(!follower.wasReplaced());

        append(QByteArray("4;8;9;\r\n").repeated(100));
        follower.poll();
        QCOMPARE(follower.dataLines(), 103);
        QVERIFY(
            QFile::resize(follower.path(), follower.bytes() - 80)); // far behind its beginning, which stays the same
        follower.poll();
        QVERIFY(follower.wasReplaced());
        QCOMPARE(follower.dataLines(), 93);
    }

    void linesAreCountedUntilTheBoxIsUnchecked()
    {
        const GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        QVERIFY(plot.watch->state() == RecordingWatch::State::Recording);
        QCOMPARE(plot.watch->file().path(), path);
        QCOMPARE(plot.watch->problem(), QString());
        MouseClick::on(plot.watch->box());
        QVERIFY2(plot.watch->headline().endsWith("the box was unticked"), qPrintable(plot.watch->headline()));
        const QList<QByteArray> lines = linesOf(path); // two of header, and an empty one behind the last line end
        const int count = plot.watch->file().dataLines();
        QCOMPARE(count, lines.size() - 3);
        QVERIFY(lines.at(lines.size() - 2).startsWith(QByteArray::number(count) + ';'));
        QCOMPARE(plot.watch->lastFailure(), QString());
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
        const QLocale locale;
        const QString counts = QString("Lines: %1, bytes: %2, last line: ")
                                   .arg(locale.toString(count), locale.toString(QFileInfo(path).size()));
        QCOMPARE(plot.recordingPanel().filter(counts).size(), 1);
        QCOMPARE(plot.window->findChild<RecordingPanel *>()->findChild<QLineEdit *>()->text(), path);
        QCOMPARE(plot.recordingPanel().size(), 3); // no symbol and no failure
    }

    void linesWithOldValuesAreCounted()
    {
        GrowingPlot plot("two-modules");
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        const int fresh = plot.watch->file().dataLines();
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
        plot.modules().setSilent(1, true);
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > fresh + 10, maximumWaitMs);
        plot.poll();
        QCOMPARE(plot.watch->linesWithOldValues(), plot.watch->file().dataLines() - fresh);

        const QString key = plot.modules().settings(1).key;
        const QRegularExpression words("with old values; since [0-9:]{8} the values of " + key + " are old ones$");
        QTRY_VERIFY_WITH_TIMEOUT(plot.watch->warning().contains(words), maximumWaitMs);
        QVERIFY(plot.watch->headline().contains(plot.watch->warning()) && plot.window->recordings()->hasTrouble());
        QCOMPARE(plot.watch->problem(), QString()); // every line is in the file
        QVERIFY(plot.recordingPanel().contains("symbol"));
        QCOMPARE(plot.answersLabel()->text().section(", ", 1), "not answering: " + key);

        plot.modules().setSilent(1, false);
        QTRY_VERIFY_WITH_TIMEOUT(!plot.watch->warning().contains("since "), maximumWaitMs);
        plot.poll();
        const int lines = plot.watch->file().dataLines();
        const int old = plot.watch->linesWithOldValues();
        QTRY_VERIFY_WITH_TIMEOUT(linesOf(path).size() > lines + 10, maximumWaitMs);
        plot.poll();
        QCOMPARE(plot.watch->linesWithOldValues(), old); // the new ones are not
        MouseClick::on(plot.watch->box());
        QVERIFY(plot.watch->linesWithOldValues() > 8); // still to be read when the recording is over
        GrowingPlot::record(plot.watch, temporaryPath("next.csv"));
        QCOMPARE(plot.watch->linesWithOldValues(), 0);
    }

    void runReportsLinesWithOldValues()
    {
        RunPlan plan;
        plan.scene = readSceneFile(shippedScenePath("two-modules")).scene;
        plan.seconds = 3.0; // enough for a busy machine to sample some lines before and after the click
        plan.plugins = QStringList(PLUGIN);
        plan.log = temporaryPath("run.csv");
        plan.hasScene = plan.isTimed = true;
        bool hasHint = false;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (linesOf(plan.log).size() > 6) {
                poll.stop();
                const QWidgetList windows = QApplication::topLevelWidgets();
                for (const QWidget *const window : windows) {
                    hasHint = hasHint || window->findChild<HintBar *>() != nullptr;
                    if (const auto *const panel = window->findChild<ModulePanel *>()) {
                        panel->findChildren<QCheckBox *>().constLast()->click(); // "Silent" of the second module
                    }
                }
            }
        });
        poll.start(1);
        const Paper paper;
        WorkbenchRun(plan, paper.terminal).exec();
        QVERIFY2(!hasHint, "a scene needs no first steps");
        QVERIFY2(paper.errors().contains("run.csv: lines with old values"), qPrintable(paper.errors()));
    }

    void announcedLinesThatNeverArriveAreReported()
    {
        const GrowingPlot plot;
        plot.window->resize(1200, 800);
        const auto *const dock = plot.raisedDock("recording");
        const auto *const messages = plot.raisedDock("message");
        QCoreApplication::processEvents();
        QVERIFY(dock->visibleRegion().isEmpty());
        QVERIFY(!messages->visibleRegion().isEmpty());
        qDebug("new line: of before, which is none of this recording");
        GrowingPlot::record(plot.watch, temporaryPath("run.csv"));
        qDebug("virtual void XYPlotter::timerEvent(QTimerEvent*) new line:  2 ; 1;1;");
        plot.poll();
        QCOMPARE(plot.watch->missingLines(), 1);
        QVERIFY(plot.watch->problem().startsWith("1 line sampled but not in run.csv"));
        QVERIFY(!plot.recordingPanel().filter("not in the file: 1").isEmpty());
        QCoreApplication::processEvents();
        QVERIFY(!dock->visibleRegion().isEmpty() && messages->visibleRegion().isEmpty());
        plot.poll(); // no more are lost
        QCOMPARE(plot.watch->problem(), QString());
        QVERIFY(plot.recordingPanel().constLast().contains("1 line sampled but not in run.csv")); // the last failure
    }

    void recordingThatGetsNoPointsIsGivenUp()
    {
        const GrowingPlot plot;
        const RecordingDriver driver(plot.container, plot.watch, temporaryPath("run.csv"), [] { return false; });
        const QSignalSpy failed(&driver, &RecordingDriver::failed);
        auto *const timer = driver.findChild<QTimer *>();
        QVERIFY(timer->isActive());
        QTimerEvent elapsed(timer->timerId());
        QCoreApplication::sendEvent(timer, &elapsed);
        QCOMPARE(failed.size(), 1);
        QCOMPARE(driver.error(), QString("no curve got a point to record"));
    }

    /// The plugin continues to write after each of these, without a header: only the workbench reports it.
    void disturbedLogIsReported_data()
    {
        testRows<QString>({"expected"}, {{"removed", "run.csv has vanished"},
                                         {"removed and begun anew", "run.csv was replaced"},
                                         {"replaced", "run.csv was replaced"},
                                         {"truncated", "run.csv was replaced"}});
    }

    void disturbedLogIsReported()
    {
        QFETCH(QString, expected);
        const QByteArray how = QTest::currentDataTag();
        GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        if (how == "truncated") {
            QVERIFY(QFile::resize(path, 40));
        } else {
            QVERIFY(QFile::remove(path));
        }
        if (how == "replaced") {
            QVERIFY(QFile::copy(PLUGIN, path)); // longer than the log
            QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        } else if (how == "removed and begun anew") {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(path), maximumWaitMs); // by the next line
        }
        for (int look = 0; look < 2; ++look) { // it stays so
            plot.poll();
            QVERIFY2(plot.watch->problem().contains(expected), qPrintable(plot.watch->problem()));
            if (how == "removed") {
                break; // the next line may come at any time
            }
        }
        plot.workbench.messages().deliver();
        QCOMPARE(plot.noted.filter(expected).size(), 1);
        QVERIFY(plot.recordingPanel().contains("symbol"));
        QCOMPARE(plot.recordingPanel().filter(expected).size(), 2); // the headline, and the last failure
    }

    void logWithoutItsHeaderIsReported()
    {
        const GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        rlimit usual = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &usual), 0);
        const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit nothing = {0, usual.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &nothing), 0); // as on a full disk: files can be made, and stay empty
        GrowingPlot::record(plot.watch, path);
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, ignored);
        QVERIFY2(plot.watch->problem().contains("its header could not be written"), qPrintable(plot.watch->problem()));
    }

    void troubleComesBeforeWhatGoesWell()
    {
        const GrowingPlot plot;
        ContainerInterface *const other = plot.window->addContainer();
        plot.window->openContainer(other);
        plot.recordLines(temporaryPath("run.csv"));
        GrowingPlot::record(plot.window->recordings()->watch(other), "/proc/run.csv");
        const QString summary = plot.window->recordings()->summary();
        QVERIFY2(summary.contains("could not be opened") && !summary.contains("Recording into"), qPrintable(summary));
    }

private:
    void append(const QByteArray &bytes) const
    {
        QFile file(temporaryPath("run.csv"));
        QVERIFY(file.open(QIODevice::Append));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
};

GUARDED_TEST(RecordingsTest)
#include "RecordingsTest.moc"
