#include "GuardedTest.h"
#include "modules/AnswerWatch.h"
#include "modules/ModuleRack.h"
#include "window/ExchangePanel.h"
#include "window/HintBar.h"
#include "window/MessagePanel.h"
#include "window/Palettes.h"

#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"
#include "logging/MessageLog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLocale>
#include <QPushButton>
#include <QTreeView>
#include <QTreeWidget>

namespace
{

/// The button of \a window whose text, without the mark of its key, is \a text; null when there is none.
template<typename Button> Button *buttonOf(const QWidget &window, const QString &text)
{
    const QList<Button *> buttons = window.findChildren<Button *>();
    for (Button *const button : buttons) {
        if (button->text().remove(QLatin1Char('&')) == text) {
            return button;
        }
    }
    return nullptr;
}

} // namespace

/// What the panels around the workspace show, and what their boxes and buttons do.
class PanelsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void messagesAreChosenCopiedAndCleared()
    {
        MessageLog log;
        MessagePanel panel(&log);
        panel.show();
        log.deliver();
        auto *const clear = buttonOf<QPushButton>(panel, QStringLiteral("Clear"));
        clear->click(); // of what the platform has written
        expectMessage(QtWarningMsg, QRegularExpression("careful"));
        expectMessage(QtCriticalMsg, QRegularExpression("broken"));
        qInfo("news\nin two lines");
        qWarning("careful");
        qCritical("broken");
        qDebug("detail");
        log.deliver();
        QCOMPARE(shownTexts(panel), QStringList({"news in two lines", "careful", "broken"}));
        auto *const choice = panel.findChild<QComboBox *>();
        QTest::keyClick(choice, Qt::Key_Down);
        QCOMPARE(shownTexts(panel), QStringList({"careful", "broken"}));
        QTest::keyClick(choice, Qt::Key_End);
        QCOMPARE(shownTexts(panel), QStringList("broken"));
        buttonOf<QCheckBox>(panel, QStringLiteral("Debug lines"))->click();
        QCOMPARE(shownTexts(panel), QStringList({"broken", "detail"}));

        auto *const copy = buttonOf<QPushButton>(panel, QStringLiteral("Copy"));
        copy->click();
        QCOMPARE(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
        auto *const view = panel.findChild<QTreeView *>();
        view->setCurrentIndex(view->model()->index(1, 0));
        copy->click();
        const QString copied = QGuiApplication::clipboard()->text();
        QVERIFY2(copied.endsWith("\tDebug\tdefault\tdetail\n") && copied.count(QLatin1Char('\n')) == 1,
                 qPrintable(copied));
        clear->click();
        QTest::keyClick(choice, Qt::Key_Home);
        QCOMPARE(shownTexts(panel), QStringList());
    }

    void exchangesAreShownPerModule()
    {
        PluginHandler handler;
        ModuleRack modules(&handler, SimulationClock::Drive::Exchanges, 1);
        QVERIFY(modules.add({QStringLiteral("io-block"), QStringLiteral("A"), {}}, 1));
        QVERIFY(modules.add({QStringLiteral("servo-1"), QStringLiteral("B"), {}}, 1));
        AnswerWatch watch(&modules);
        const ExchangePanel panel(&modules, &watch);
        const auto ask = [&handler](unsigned char command) {
            CommandCombo pair;
            pair.request.setAddress(handler.getModulePlugin(QStringLiteral("B"))->moduleAddress());
            pair.request.setCommand(command);
            handler.getModulePlugin(QStringLiteral("B"))->commandHandlerInterface()->sendCommandCombos({&pair});
        };
        watch.poll(0);
        for (int i = 0; i < 7; ++i) {
            ask(6);
        }
        modules.setSilent(1, true);
        ask(6);
        watch.poll(1000);
        QStringList cells = cellsOf(panel, 1);
        QCOMPARE(cells.at(0), QStringLiteral("B"));
        QCOMPARE(cells.at(1), QLocale().toString(7.0, 'f', 1));
        QCOMPARE(cells.at(5), QStringLiteral("1"));
        const auto statistics = *modules.statistics(1);
        QCOMPARE(cells.at(2), microseconds(double(statistics.lastDurationNs)));
        QCOMPARE(cells.at(3), microseconds(double(statistics.totalDurationNs) / 8.0));
        QCOMPARE(cells.at(4), microseconds(double(statistics.longestDurationNs)));
        QCOMPARE(cellsOf(panel, 0).at(1), QLocale().toString(0.0, 'f', 1));
        modules.setPluggedIn(1, false);
        watch.poll(2000);
        QCOMPARE(cellsOf(panel, 1), QStringList({"B", "-", "-", "-", "-", "-"}));
    }

    void hintIsClosedForGood()
    {
        HintBar bar;
        bar.show();
        QVERIFY(!HintBar::wasClosed());
        bar.findChild<QPushButton *>()->click();
        QVERIFY(!bar.isVisible() && HintBar::wasClosed());
    }

    void palettesAreWhatTheyAreCalled()
    {
        QVERIFY(!paletteChoice(QStringLiteral("Dark")));
        for (const bool isDark : {true, false}) {
            applyPalette(*paletteChoice(isDark ? QStringLiteral("dark") : QStringLiteral("light")));
            const QPalette palette = QApplication::palette();
            for (const auto &[text, ground] :
                 {qMakePair(QPalette::WindowText, QPalette::Window), qMakePair(QPalette::Text, QPalette::Base),
                  qMakePair(QPalette::ButtonText, QPalette::Button)}) {
                const int distance = palette.color(text).lightness() - palette.color(ground).lightness();
                QVERIFY2((isDark ? distance : -distance) > 100, qPrintable(QString::number(distance)));
            }
            // A plot's labels upon its ground.
            QVERIFY(palette.color(QPalette::Light).lightness() - palette.color(QPalette::Shadow).lightness() > 100);
        }
    }

private:
    static QStringList shownTexts(const MessagePanel &panel)
    {
        QStringList texts;
        const QAbstractItemModel *const model = panel.findChild<QTreeView *>()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts.append(model->index(row, model->columnCount() - 1).data().toString());
        }
        return texts;
    }

    static QStringList cellsOf(const ExchangePanel &panel, int row)
    {
        QStringList cells;
        const QTreeWidgetItem *const item = panel.findChild<QTreeWidget *>()->topLevelItem(row);
        for (int column = 0; column < item->columnCount(); ++column) {
            cells.append(item->text(column));
        }
        return cells;
    }

    static QString microseconds(double nanoseconds)
    {
        return QLocale().toString(nanoseconds / 1000.0, 'f', 1);
    }
};

GUARDED_TEST_MAIN(PanelsTest)
#include "PanelsTest.moc"
