#include "GuardedTest.h"
#include "logging/MessageLog.h"
#include "logging/MessageModel.h"

namespace
{

QVector<LogMessage> many(int count, QtMsgType type, const QString &text)
{
    return QVector<LogMessage>(count, LogMessage{QTime(), type, QStringLiteral("default"), text, false});
}

} // namespace

/// What is kept of the logger's messages, and what of it is shown.
class MessagesTest : public GuardedTest
{
    Q_OBJECT

private slots:
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
        model.append(many(1, QtDebugMsg, "debug"));
        model.append(many(MessageModel::maximumDebugLines, QtDebugMsg, "more"));
        QCOMPARE(model.rowCount(), MessageModel::maximumMessages);

        MessageFilter filter;
        filter.setSourceModel(&model);
        QCOMPARE(filter.rowCount(), MessageModel::maximumMessages - MessageModel::maximumDebugLines);
        filter.setMinimum(QtWarningMsg);
        QCOMPARE(filter.rowCount(), 0);
        filter.setShowsDebug(true); // which the severity does not concern
        QCOMPARE(filter.rowCount(), MessageModel::maximumDebugLines);
    }

    void whatNobodyFetchesIsBounded()
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
        QCOMPARE(fetched.size(), MessageLog::maximumWaiting);
        QCOMPARE(fetched.constFirst().text, QStringLiteral("5"));
        QVERIFY(fetched.constFirst().isMarked && !fetched.at(1).isMarked);
        log.deliver();
        QCOMPARE(fetched.size(), MessageLog::maximumWaiting);
    }
};

GUARDED_TEST_MAIN(MessagesTest)
#include "MessagesTest.moc"
