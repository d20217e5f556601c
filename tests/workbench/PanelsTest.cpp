#include "GuardedTest.h"
#include "logging/MessageLog.h"
#include "logging/MessageModel.h"
#include "window/HintBar.h"
#include "window/MessagePanel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>

namespace
{

QVector<LogMessage> many(int count, QtMsgType type, const QString &text)
{
    return QVector<LogMessage>(count, LogMessage{QTime(), type, QStringLiteral("default"), text, false});
}

} // namespace

/// Messages from the logger to the panel, and the hint for newcomers.
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
        auto *const clear = partCalled<QPushButton>(panel, QStringLiteral("Clear"));
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
        partCalled<QCheckBox>(panel, QStringLiteral("Debug lines"))->click();
        QCOMPARE(shownTexts(panel), QStringList({"broken", "detail"}));

        auto *const copy = partCalled<QPushButton>(panel, QStringLiteral("Copy"));
        auto *const view = panel.findChild<QTreeView *>();
        const auto copied = [copy] {
            copy->click();
            static const QRegularExpression time(QStringLiteral("[0-9:.]+\t"));
            return QGuiApplication::clipboard()->text().replace(time, QString());
        };
        const QString both = QStringLiteral("Critical\tdefault\tbroken\nDebug\tdefault\tdetail\n");
        QCOMPARE(copied(), both); // nothing is selected
        view->setCurrentIndex(view->model()->index(1, 0));
        QCOMPARE(copied(), QStringLiteral("Debug\tdefault\tdetail\n"));
        view->selectionModel()->select(view->model()->index(0, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(copied(), both); // in the order of the list, not of the selection
        QGuiApplication::clipboard()->clear();
        QApplication::setActiveWindow(&panel);
        view->setFocus();
        QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
        clear->click();
        QTest::keyClick(choice, Qt::Key_Home);
        QCOMPARE(shownTexts(panel), QStringList());
    }

    void listFollowsTheEndUntilSomeoneScrollsUp()
    {
        MessageLog log;
        MessagePanel panel(&log);
        panel.resize(400, 200);
        panel.show();
        const QScrollBar *const bar = panel.findChild<QTreeView *>()->verticalScrollBar();
        emit log.arrived(many(50, QtInfoMsg, "news"));
        QVERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
        panel.findChild<QTreeView *>()->scrollToTop();
        emit log.arrived(many(50, QtInfoMsg, "news"));
        QCOMPARE(bar->value(), bar->minimum());
    }

    void floodKeepsTheNewestAndAllWarnings()
    {
        MessageModel model;
        model.append(many(1, QtWarningMsg, "early warning"));
        for (int batch = 0; batch < 10; ++batch) {
            model.append(many(700, QtDebugMsg, QString::number(batch)));
        }
        QCOMPARE(model.rowCount(), 1 + MessageModel::maximumDebugLines);
        QCOMPARE(model.message(0).text, QStringLiteral("early warning"));
        QCOMPARE(model.message(1).text, QStringLiteral("8")); // 300 of them, and 700 of the last batch
        QCOMPARE(model.message(model.rowCount() - 1).text, QStringLiteral("9"));
        model.append(many(3 * MessageModel::maximumMessages, QtInfoMsg, "late"));
        QCOMPARE(model.rowCount(), MessageModel::maximumMessages);
        QCOMPARE(model.message(0).text, QStringLiteral("late"));
        model.append(many(MessageModel::maximumDebugLines, QtDebugMsg, "debug"));
        QCOMPARE(model.rowCount(), MessageModel::maximumMessages);

        MessageFilter filter;
        filter.setSourceModel(&model);
        QCOMPARE(filter.rowCount(), MessageModel::maximumMessages - MessageModel::maximumDebugLines);
        filter.setMinimum(QtWarningMsg);
        QCOMPARE(filter.rowCount(), 0);
        filter.setShowsDebug(true); // which the severity does not concern
        QCOMPARE(filter.rowCount(), MessageModel::maximumDebugLines);
        model.clear();
        model.append(many(1, QtInfoMsg, "news") + many(1, QtWarningMsg, "careful"));
        const auto symbol = [&model](int row) {
            const QModelIndex cell = model.index(row, MessageModel::Severity);
            return cell.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
        };
        QVERIFY(!symbol(0).isNull() && !symbol(1).isNull() && symbol(0) != symbol(1));
        model.clear();
        model.append(many(MessageModel::maximumDebugLines, QtDebugMsg, "all of them fit again"));
        QCOMPARE(filter.rowCount(), MessageModel::maximumDebugLines);
    }

    void waitingMessagesAreBounded()
    {
        MessageLog log;
        QVector<LogMessage> fetched;
        connect(&log, &MessageLog::arrived, this, [&](const QVector<LogMessage> &messages) { fetched += messages; });
        bool isOdd = false;
        log.setMarker([&isOdd] { return isOdd; });
        for (int i = 0; i < MessageLog::maximumWaiting + 5; ++i) {
            isOdd = i % 2 == 1;
            qDebug("%d", i);
        }
        log.deliver();
        log.deliver(); // nothing is delivered twice
        QCOMPARE(fetched.size(), MessageLog::maximumWaiting);
        QCOMPARE(fetched.constFirst().text, QStringLiteral("5"));
        QVERIFY(fetched.constFirst().isMarked && !fetched.at(1).isMarked);
    }

    void hintIsClosedForGood()
    {
        HintBar bar;
        bar.show();
        QVERIFY(!HintBar::wasClosed());
        bar.findChild<QPushButton *>()->click();
        QVERIFY(!bar.isVisible() && HintBar::wasClosed());
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
};

GUARDED_TEST_MAIN(PanelsTest)
#include "PanelsTest.moc"
