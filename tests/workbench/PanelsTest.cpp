#include "ExchangePanel.h"
#include "GuardedTest.h"
#include "MessageLog.h"
#include "MessageModel.h"
#include "MessagePanel.h"
#include "ModuleRack.h"

#include "host/KAROModuleInterface.h"
#include "host/PluginHandler.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QTreeView>
#include <QTreeWidget>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

/// The panels of messages and exchanges, and what is behind them.
class PanelsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void logHearsEveryThreadAndPassesOn();
    void logEndsBehindAnotherListener();
    void floodOfDebugLinesPushesNoWarningOut();
    void panelFiltersCopiesAndClears();
    void rateIsThatOfTheLastSeconds();
    void tableFollowsModulesThatComeAndGo();
};

namespace
{

QVector<LogMessage> messagesOf(QtMsgType type, int count, const QString &text = QStringLiteral("text"))
{
    return QVector<LogMessage>(count, LogMessage{QTime(1, 2, 3), type, QStringLiteral("default"), text});
}

QtMessageHandler behind = nullptr;
std::atomic<int> counted{0};

/// The tests' own handler is not made for several threads.
void count(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    Q_UNUSED(type)
    Q_UNUSED(context)
    Q_UNUSED(text)
    ++counted;
}

void passOn(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    behind(type, context, text);
}

} // namespace

void PanelsTest::logHearsEveryThreadAndPassesOn()
{
    constexpr int threadCount = 4;
    constexpr int perThread = 300;
    behind = qInstallMessageHandler(count);
    auto log = std::make_unique<MessageLog>();
    int heard = 0;
    // A listener that has something to say itself must neither block nor hear itself in the same batch.
    connect(log.get(), &MessageLog::arrived, this, [&](const QVector<LogMessage> &batch) {
        heard += batch.size();
        qDebug("heard");
    });
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < perThread; ++line) {
                qInfo("from a thread");
            }
        });
    }
    log->deliver();
    for (std::thread &thread : threads) {
        thread.join();
    }
    log->deliver();
    QVERIFY(counted >= threadCount * perThread);
    QVERIFY(heard >= threadCount * perThread && heard <= threadCount * perThread + 1);

    auto second = std::make_unique<MessageLog>();
    log.reset(); // the other one goes on
    QVector<LogMessage> batch;
    connect(second.get(), &MessageLog::arrived, this, [&](const QVector<LogMessage> &messages) { batch = messages; });
    for (int line = 0; line < MessageLog::mostWaiting + 5; ++line) {
        qInfo("line %d", line);
    }
    second->deliver();
    QCOMPARE(batch.size(), MessageLog::mostWaiting);
    QCOMPARE(batch.constFirst().text, QStringLiteral("line 5"));
    second.reset();
    QVERIFY(qInstallMessageHandler(behind) == count); // nothing of the logs is left in the chain
}

void PanelsTest::logEndsBehindAnotherListener()
{
    auto log = std::make_unique<MessageLog>();
    behind = qInstallMessageHandler(passOn);
    log.reset();
    qInfo("one");
    log = std::make_unique<MessageLog>(); // must not make a ring of the chain
    qInfo("two");
    QCOMPARE(messages(QtInfoMsg), QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    qInstallMessageHandler(behind);
    log.reset();
    qInfo("three");
    QCOMPARE(messages(QtInfoMsg).size(), 3);
}

void PanelsTest::floodOfDebugLinesPushesNoWarningOut()
{
    MessageModel model;
    model.append(messagesOf(QtWarningMsg, 1, QStringLiteral("early")));
    for (int batch = 0; batch < 100; ++batch) {
        model.append(messagesOf(QtDebugMsg, 70));
        model.append(messagesOf(QtInfoMsg, 1));
    }
    QCOMPARE(model.rowCount(), 1 + MessageModel::mostDebugLines + 100);
    QCOMPARE(model.message(0).text, QStringLiteral("early"));
    QCOMPARE(model.message(model.rowCount() - 1).type, QtInfoMsg);

    model.append(messagesOf(QtInfoMsg, MessageModel::mostMessages - 5, QStringLiteral("late")));
    QCOMPARE(model.rowCount(), MessageModel::mostMessages);
    QCOMPARE(model.message(4).type, QtInfoMsg);
    model.append(messagesOf(QtDebugMsg, 2 * MessageModel::mostMessages));
    QCOMPARE(model.rowCount(), MessageModel::mostMessages);
    QCOMPARE(model.message(MessageModel::mostMessages - MessageModel::mostDebugLines - 1).type, QtInfoMsg);
}

void PanelsTest::panelFiltersCopiesAndClears()
{
    MessageLog log;
    MessagePanel panel(&log);
    panel.show();
    const auto *const view = panel.findChild<QTreeView *>();
    emit log.arrived(messagesOf(QtDebugMsg, 500, QStringLiteral("new line: ")));
    emit log.arrived(messagesOf(QtInfoMsg, 1, QStringLiteral("saved\r\n")) + messagesOf(QtWarningMsg, 1) +
                     messagesOf(QtCriticalMsg, 1));
    QCOMPARE(view->model()->rowCount(), 3);
    auto *const severities = panel.findChild<QComboBox *>();
    severities->setFocus();
    QTest::keyClick(severities, Qt::Key_End);
    QCOMPARE(view->model()->rowCount(), 1);
    QTest::keyClick(severities, Qt::Key_Home);
    QTest::mouseClick(panel.findChild<QCheckBox *>(), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(view->model()->rowCount(), 503);
    QVERIFY(view->visualRect(view->model()->index(502, 0)).intersects(view->viewport()->rect()));

    view->selectionModel()->select(view->model()->index(500, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QPushButton *copy = nullptr;
    QPushButton *clear = nullptr;
    const QList<QPushButton *> buttons = panel.findChildren<QPushButton *>();
    for (QPushButton *const button : buttons) {
        (button->text() == QStringLiteral("Cop&y") ? copy : clear) = button;
    }
    QTest::mouseClick(copy, Qt::LeftButton);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("01:02:03.000\tInfo\tdefault\tsaved\n"));
    QTest::mouseClick(clear, Qt::LeftButton);
    QCOMPARE(panel.text(), QString());
}

void PanelsTest::rateIsThatOfTheLastSeconds()
{
    ExchangeRate rate;
    CommandHandlerInterface::Statistics statistics;
    rate.note(statistics, 0);
    QCOMPARE(rate.perSecond(), 0.0);
    for (qint64 nowMs = 500; nowMs <= 10000; nowMs += 500) {
        statistics.exchanges += nowMs <= 6000 ? 35 : 5;
        rate.note(statistics, nowMs);
    }
    QCOMPARE(rate.perSecond(), 10.0);
    statistics.exchanges = 3; // another module under the same name
    rate.note(statistics, 10500);
    QCOMPARE(rate.perSecond(), 0.0);
    statistics.exchanges = 10;
    statistics.totalDurationNs = 25000;
    rate.note(statistics, 11000);
    QCOMPARE(rate.perSecond(), 14.0);
    QCOMPARE(meanDurationUs(statistics), 2.5);
}

void PanelsTest::tableFollowsModulesThatComeAndGo()
{
    PluginHandler handler;
    ModuleRack rack(&handler, SimulationClock::Drive::Exchanges, 1);
    QVERIFY(rack.add({QStringLiteral("servo-1"), QStringLiteral("S/One"), {}}, 1));
    ExchangePanel panel(&rack);
    const auto *const table = panel.findChild<QTreeWidget *>();
    QVERIFY(rack.add({QStringLiteral("io-block"), QStringLiteral("S/Two"), {}}, 1));

    CommandCombo combo;
    rack.setSilent(1, true);
    for (const char *const key : {"S/One", "S/Two", "S/Two"}) {
        handler.getModulePlugin(QString::fromLatin1(key))->commandHandlerInterface()->sendCommandCombos({&combo});
    }
    panel.refresh(1000);
    panel.refresh(1500);
    QCOMPARE(table->topLevelItemCount(), 2);
    QCOMPARE(table->topLevelItem(0)->text(1), QStringLiteral("0.7")); // one in the 1.5 s since the panel was made
    QCOMPARE(table->topLevelItem(0)->text(5), QStringLiteral("0"));
    QCOMPARE(table->topLevelItem(1)->text(5), QStringLiteral("2"));
    QVERIFY(panel.perSecond() > 0.0);
    rack.setPluggedIn(0, false);
    panel.refresh(2000);
    QCOMPARE(table->topLevelItem(0)->text(1), QStringLiteral("-"));
    QVERIFY(table->topLevelItem(0)->isDisabled());
}

GUARDED_TEST_MAIN(PanelsTest)
#include "PanelsTest.moc"
