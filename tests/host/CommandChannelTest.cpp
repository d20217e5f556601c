#include "GuardedTest.h"
#include "host/CommandHandlerInterface.h"

#include <QDeadlineTimer>

namespace
{

/// Answers with ten times the type of the request, or not at all; both at once.
class Channel : public CommandHandlerInterface
{
public:
    bool isSilent = false;
    QList<int> asked;

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override
    {
        asked.append(request.type());
        deadlineIsFresh = deadlineIsFresh && deadline.remainingTime() > replyDeadlineMs / 2;
        reply.setValue(request.type() * 10);
        return !isSilent;
    }

public:
    bool deadlineIsFresh = true;
};

} // namespace

class CommandChannelTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void fillsEveryReplyInOrder()
    {
        Channel channel;
        CommandCombo first;
        CommandCombo second;
        first.request.setType(0x1FF);
        second.request.setType(3);
        channel.sendCommandCombos({&second, nullptr, &first});
        QCOMPARE(channel.asked, QList<int>({3, 0xFF}));
        QCOMPARE(first.reply.value(), 2550);
        QCOMPARE(second.reply.value(), 30);
        QVERIFY(first.reply.status() == Command::Status::Answered);
        QVERIFY(channel.deadlineIsFresh);
    }

    void waitsForASilentModuleOnceInAWhile()
    {
        Channel channel;
        CommandCombo first;
        CommandCombo second;
        first.request.setType(1);
        second.request.setType(2);
        channel.sendCommandCombos({&first, &second});

        channel.isSilent = true;
        channel.asked.clear();
        channel.sendCommandCombos({&first, &second});
        QCOMPARE(channel.asked, QList<int>({1}));
        QVERIFY(first.reply.status() == Command::Status::Unanswered);
        QVERIFY(second.reply.status() == Command::Status::Unanswered);
        QCOMPARE(first.reply.value(), 10); // the old value, not what was half received

        channel.isSilent = false;
        channel.sendCommandCombos({&second});
        QCOMPARE(channel.asked, QList<int>({1}));
        QVERIFY(second.reply.status() == Command::Status::Unanswered);

        const auto isAnswered = [&] {
            channel.sendCommandCombos({&second});
            return second.reply.status() == Command::Status::Answered;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isAnswered(), CommandHandlerInterface::retryIntervalMs * 4);
        channel.sendCommandCombos({&first});
        QVERIFY(first.reply.status() == Command::Status::Answered);
        QVERIFY(channel.statistics().unanswered >= 3);
        QVERIFY(channel.statistics().longestDurationNs <= channel.statistics().totalDurationNs);
    }
};

GUARDED_TEST_MAIN(CommandChannelTest)
#include "CommandChannelTest.moc"
