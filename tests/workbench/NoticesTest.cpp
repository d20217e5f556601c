#include "GrowingPlot.h"
#include "logging/NamedPath.h"
#include "logging/SourceWatch.h"
#include "modules/AnswerWatch.h"
#include "window/ContainerWindow.h"
#include "window/HelpMenu.h"
#include "window/MessagePanel.h"
#include "window/NoticeBar.h"
#include "window/WorkspaceWindow.h"

using PlotterWindow::Side;

/// Notices in the container's window, in the status bar and in the messages, and the files that they lead to.
class NoticesTest : public GuardedTest
{
    Q_OBJECT

public slots:
    void open(const QUrl &url)
    {
        m_opened.append(url.toLocalFile());
    }

private slots:
    void silentModuleIsShownInItsWindowOnly()
    {
        GrowingPlot plot("two-modules");
        QCOMPARE(plot.modules().add({"unread", SimulationSettings{"servo-1"}}), QString());
        // A module that comes switches all sources off, too.
        QTRY_VERIFY_WITH_TIMEOUT(shown(plot).contains("unread was plugged in at "), maximumWaitMs);
        plot.choose(readSceneFile(shippedScenePath("two-modules")).scene);
        QTRY_COMPARE_WITH_TIMEOUT(shown(plot), QString(), maximumWaitMs);

        const QString key = plot.modules().settings(1).key;
        plot.recordLines(temporaryPath("run.csv"));
        plot.modules().setSilent(1, true);
        const QRegularExpression notice("^Since [0-9:]{8} the values of " + key + " are old ones\n.*with old values: ");
        QTRY_VERIFY_WITH_TIMEOUT((plot.poll(), shown(plot).contains(notice)), maximumWaitMs);

        // What is below it has the rest of the height.
        plot.window->resize(1600, 1100);
        QCoreApplication::processEvents();
        const auto *const area = plot.window->findChild<WorkspaceWindow *>()->findChild<QScrollArea *>();
        QCOMPARE(area->verticalScrollBar()->maximum(), 0);
        const auto *const bar = plot.window->findChild<NoticeBar *>();
        QCOMPARE(plot.container->y(), bar->height());
        QVERIFY(bar->height() < 80 && bar->height() > 2 * bar->fontMetrics().height());

        // Closed, it stays away while its number of lines grows.
        plot.window->findChild<NoticeBar *>()->findChild<QToolButton *>()->click();
        QCOMPARE(shown(plot), QString());
        const int old = plot.watch->linesWithOldValues();
        QTRY_VERIFY_WITH_TIMEOUT((plot.poll(), plot.watch->linesWithOldValues() > old), maximumWaitMs);
        QCOMPARE(shown(plot), QString());

        // A curve that is switched off is not read: the window has no notice about its module.
        plot.curveBox(0)->click();
        QTRY_VERIFY_WITH_TIMEOUT(!shown(plot).contains("old ones"), maximumWaitMs);
        QVERIFY2(plot.watch->headline().endsWith("curve 1 was switched off"), qPrintable(plot.watch->headline()));
    }

    void barIsAsHighAsItsNoticesNeed()
    {
        NoticeBar bar;
        bar.setNotices({QString("word ").repeated(60)});
        bar.resize(1200, bar.height());
        const int height = bar.height();
        bar.resize(300, height);
        QVERIFY(bar.height() > 2 * height);
        bar.resize(1200, bar.height());
        QCOMPARE(bar.height(), height);
        bar.setNotices({"lines: 1"});
        bar.findChild<QToolButton *>()->click();
        bar.setNotices({"lines: 2"});
        QVERIFY(bar.isHidden());
        bar.setNotices({});
        bar.setNotices({"lines: 3"}); // another trouble of this kind
        QVERIFY(!bar.isHidden());

        const GrowingPlot plot;
        auto *const window = plot.window->findChild<ContainerWindow *>();
        const int without = window->minimumSizeHint().height();
        window->setNotices({"a notice"});
        QCOMPARE(window->minimumSizeHint().height(), without + window->findChild<NoticeBar *>()->height());
    }

    void lostSourcesAreNamedUntilTheyAreChosenAgain()
    {
        GrowingPlot plot("two-modules");
        const QString key = plot.modules().settings(1).key;
        plot.modules().setPluggedIn(1, false);
        QTRY_VERIFY_WITH_TIMEOUT(shown(plot).contains("the source of curve 1 is switched off"), maximumWaitMs);
        QVERIFY(shown(plot).startsWith(key + " was taken out at "));
        QCheckBox *const curve = plot.curveBox(0);
        curve->click(); // what is not drawn is not missed
        emit plot.window->findChild<AnswerWatch *>()->polled();
        QCOMPARE(shown(plot), QString());
        curve->click();
        plot.workbench.messages().deliver();
        QCOMPARE(plot.noted.filter(key + " was taken out").size(), 2); // that, and what came of it
        QCOMPARE(plot.noted.filter("XY-Plotter: " + key).size(), 1);

        plot.modules().setPluggedIn(1, true);
        QTRY_VERIFY_WITH_TIMEOUT(shown(plot).startsWith(key + " was plugged in at "), maximumWaitMs);
        plot.choose(readSceneFile(shippedScenePath("two-modules")).scene);
        QTRY_COMPARE_WITH_TIMEOUT(shown(plot), QString(), maximumWaitMs);
        // Another module under the same key, as by the dialog of a device.
        QCOMPARE(plot.modules().replace(1, ModuleSettings(plot.modules().settings(1))), QString());
        QTRY_VERIFY_WITH_TIMEOUT(shown(plot).startsWith(key + " was plugged in at "), maximumWaitMs);
        plot.choose(readSceneFile(shippedScenePath("two-modules")).scene);
        QTRY_COMPARE_WITH_TIMEOUT(shown(plot), QString(), maximumWaitMs);
        // "Refresh" empties the boxes, but no source.
        plot.container->findChild<QPushButton *>("btnRefresh")->click();
        QTest::qWait(2 * SourceWatch::settlingTimeMs);
        emit plot.window->findChild<AnswerWatch *>()->polled();
        QCOMPARE(shown(plot), QString());
    }

    void endOfARecordingHasItsReason_data()
    {
        testRows<QString>({"reason"}, {{"log box", "the box was unticked"},
                                       {"curve box", "curve 2 was switched on"},
                                       {"show all", "\"Show all data\" was switched"},
                                       {"source", "curve 1 got another source"},
                                       {"window", "the window was closed"}});
    }

    void endOfARecordingHasItsReason()
    {
        QFETCH(QString, reason);
        const QByteArray what = QTest::currentDataTag();
        GrowingPlot plot;
        const QString path = temporaryPath("run.csv");
        plot.recordLines(path);
        if (what == "log box") {
            MouseClick::on(plot.watch->box());
        } else if (what == "curve box") {
            plot.curveBox(1)->click();
        } else if (what == "show all") {
            plot.container->findChild<QCheckBox *>(PlotterWindow::optionBoxName(PlotterWindow::Option::ShowAll))
                ->click();
        } else if (what == "source") {
            auto *const table = plot.container->findChild<QTableView *>(PlotterWindow::selectorPage(0, Side::X).table);
            const QModelIndex other = table->model()->index(table->currentIndex().row() == 0 ? 1 : 0, 2);
            MouseClick::at(table->viewport(), table->visualRect(other).center());
        } else {
            plot.container->parentWidget()->close();
        }
        QTRY_VERIFY_WITH_TIMEOUT(plot.watch->headline().endsWith(reason), maximumWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT((plot.workbench.messages().deliver(), !plot.noted.filter(reason).isEmpty()),
                                 maximumWaitMs);
        QCOMPARE(namedPath(plot.noted.filter(reason).constFirst()), path);
        const bool isAsked = what == "log box";
        QCOMPARE(plot.window->recordings()->hasTrouble(), !isAsked);
        QCOMPARE(plot.window->recordings()->summary() == "Not recording", isAsked);
        if (what == "window") {
            plot.window->openContainer(plot.container);
            QVERIFY(shown(plot).contains("nothing is being recorded since the window was opened again"));
            MouseClick::on(plot.watch->box());
            plot.choose(readSceneFile(shippedScenePath("circle")).scene);
            plot.recordLines(temporaryPath("again.csv")); // by the box of the new window
            QVERIFY(plot.watch->state() == RecordingWatch::State::Recording);
        } else {
            QCOMPARE(shown(plot).isEmpty(), isAsked);
        }
    }

    void pathsAreFoundInText()
    {
        const QString path = written("a run, saved.csv", QByteArray());
        const QString folder = QFileInfo(path).absolutePath();
        QCOMPARE(namedPath("saved as " + path), path);
        QCOMPARE(namedPath("\"" + path + "\" was replaced: it is " + folder), path);
        QCOMPARE(namedPath("The file is " + path + '.'), path);
        QCOMPARE(namedPath(path + " vanished"), path);
        QCOMPARE(namedPath("in " + folder), folder);
        QCOMPARE(namedPath("SIM0/Stepper does not answer, and/or " + path + "x"), QString());
    }

    void namedFilesAreOpenedByClickAndKey()
    {
        const QString path = written("picture.png", QByteArray());
        QDesktopServices::setUrlHandler("file", this, "open");
        MessageLog log;
        MessagePanel panel(&log);
        panel.resize(800, 300);
        panel.show();
        QApplication::setActiveWindow(&panel);
        log.deliver();
        log.note(QtInfoMsg, "no file");
        log.note(QtInfoMsg, "saved as " + path);
        log.deliver();
        auto *const view = panel.findChild<QTreeView *>();
        const int last = view->model()->rowCount() - 1;
        const auto click = [&](int row) {
            const QRect cell = view->visualRect(view->model()->index(row, view->model()->columnCount() - 1));
            QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
        };
        m_opened.clear();
        click(last - 1);
        QCOMPARE(m_opened, QStringList());
        click(last);
        QCOMPARE(m_opened, QStringList(path));
        view->setFocus();
        QTest::keyClick(view, Qt::Key_Return);
        QTest::keyClick(view, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(m_opened, QStringList({path, path, QFileInfo(path).absolutePath()}));
        partCalled<QAction>(*view, "Copy Path")->trigger();
        QCOMPARE(QApplication::clipboard()->text(), path);
        view->setCurrentIndex(view->model()->index(last - 1, 0));
        QTest::keyClick(view, Qt::Key_Return);
        QCOMPARE(m_opened.size(), 3);
        const auto *const button = partCalled<QPushButton>(panel, "Open");
        QVERIFY(!button->isEnabled());
        QVERIFY(QFile::remove(path));
        expectMessage(QtWarningMsg, QRegularExpression("picture.png is not there any more"));
        click(last);
        QVERIFY(button->isEnabled());
        partCalled<QPushButton>(panel, "Clear")->click();
        QVERIFY(!button->isEnabled());
        QDesktopServices::unsetUrlHandler("file");
    }

    void guideIsFoundInItsLanguage()
    {
        const QString english = HelpMenu::guidePage("en");
        if (english.isEmpty()) {
            QSKIP("the guide was not built: cmark-gfm is missing");
        }
        QVERIFY(HelpMenu::guidePage("de").endsWith("de/user-guide.html"));
        QCOMPARE(HelpMenu::guidePage("fr"), english);
        const GrowingPlot plot;
        m_opened.clear();
        QDesktopServices::setUrlHandler("file", this, "open");
        QApplication::setActiveWindow(plot.window.get());
        QTest::keyClick(plot.window.get(), Qt::Key_F1);
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(m_opened, QStringList(english));

        // Every page that a page leads to is there, and every picture.
        static const QRegularExpression link("(?:href|src)=\"([^\"#:]+)[\"#]");
        for (const char *const language : {"en", "de"}) {
            const QDir folder = QFileInfo(HelpMenu::guidePage(language)).dir();
            const QStringList pages = folder.entryList({"*.html"});
            QVERIFY(!pages.isEmpty());
            for (const QString &page : pages) {
                QFile file(folder.filePath(page));
                QVERIFY(file.open(QIODevice::ReadOnly));
                auto match = link.globalMatch(QString::fromUtf8(file.readAll()));
                while (match.hasNext()) {
                    const QString target = match.next().captured(1);
                    QVERIFY2(QFileInfo::exists(folder.filePath(target)), qPrintable(page + ": " + target));
                }
            }
        }
    }

private:
    /// What the bar above the container shows; empty when it is hidden.
    static QString shown(const GrowingPlot &plot)
    {
        for (const NoticeBar *const bar : partsOf<NoticeBar>(*plot.window)) {
            const QStringList texts = GrowingPlot::labelsIn(bar).mid(1);
            if (!bar->isHidden()) {
                return texts.join('\n');
            }
        }
        return {};
    }

    QStringList m_opened;
};

GUARDED_TEST(NoticesTest)
#include "NoticesTest.moc"
