#include "GuardedTest.h"
#include "ScriptedModule.h"
#include "host/ContainerInterface.h"
#include "host/PluginHandler.h"
#include "host/Register.h"
#include "host/TempTools.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <array>
#include <functional>

namespace
{

/// Records its notifications, and calls a function of the test at each.
class Container : public ContainerInterface
{
public:
    explicit Container(PluginHandler *handler)
        : ContainerInterface(QString(), QString(), 6, handler, QString(), nullptr)
    {
    }

    void handleModulePlugin(KAROModuleInterface *module, QString message) override
    {
        const bool isListed = module != nullptr && pluginHandler()->getModulePlugin(module->key()) == module;
        notices.append(module == nullptr ? QStringLiteral("gone") : message + (isListed ? " comes" : " leaves"));
        onNotice();
    }

    QStringList notices;
    std::function<void()> onNotice = [] {};
};

/// Answers after a delay on a simulated clock; the value is ten times the request's type, plus an offset.
class SlowChannel : public CommandHandlerInterface
{
public:
    void pass(int ms)
    {
        nowMs += ms;
    }

    QList<int> asked;
    bool isSilent = false;
    int answerMs = 0;
    int offset = 0;
    qint64 nowMs = 0;

protected:
    bool transact(const Command &request, Command &reply, const QDeadlineTimer &deadline) override
    {
        asked.append(request.type());
        const auto remainingMs = static_cast<int>(deadline.remainingTime()) + 1;
        const bool isLate = isSilent || (answerMs > remainingMs && answerMs < 1000);
        pass(isLate ? remainingMs : answerMs);
        reply.setValue(isLate ? -1 : request.type() * 10 + offset); // half received, or the answer
        return !isLate;
    }

    qint64 nowNs() const override
    {
        return nowMs * 1000000;
    }
};

CommandCombo pair(unsigned short type)
{
    CommandCombo made;
    made.request.setAddress(1);
    made.request.setType(type);
    return made;
}

} // namespace

class ModulesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void registryNotifiesContainers()
    {
        auto *const handler = new PluginHandler;
        Container container(handler);
        const QPointer<KAROModuleInterface> removed = new ScriptedModule(QStringLiteral("z"));
        const QPointer<KAROModuleInterface> destroyedElsewhere = new ScriptedModule(QStringLiteral("a"));
        ScriptedModule sameKey(QStringLiteral("z"));
        QVERIFY(handler->addModulePlugin(removed));
        QVERIFY(handler->addModulePlugin(destroyedElsewhere));
        QVERIFY(!handler->addModulePlugin(&sameKey));
        QCOMPARE(handler->getModulePluginKeys(false), QStringList({"z", "a"}));
        QCOMPARE(handler->getModulePluginKeys(true), QStringList({"a", "z"}));

        QVERIFY(handler->removeModulePlugin(QStringLiteral("z")));
        QVERIFY(removed.isNull());
        delete destroyedElsewhere;
        QVERIFY(handler->getModulePluginKeys(false).isEmpty());
        QCOMPARE(container.notices, QStringList({"Scripted comes", "Scripted comes", "Scripted leaves", "gone"}));
        delete handler; // before its container
    }

    void registrySurvivesWhatContainersDo()
    {
        PluginHandler handler;
        Container first(&handler);
        const QPointer<Container> dying = new Container(&handler);
        Container last(&handler);
        first.onNotice = [&] { delete dying; };
        handler.addModulePlugin(new ScriptedModule(QStringLiteral("m")));
        QCOMPARE(last.notices.size(), 1);

        // The first container removes the new module: the last one is notified of the removal only.
        first.onNotice = [&] { handler.removeModulePlugin(QStringLiteral("n")); };
        handler.addModulePlugin(new ScriptedModule(QStringLiteral("n")));
        QCOMPARE(last.notices.size(), 2);
    }

    void registerListDropsDestroyedRegisters()
    {
        TempTools tools(1, 1, nullptr, QString(), 149, 147);
        ScriptedModule module(QStringLiteral("m"));
        QList<Register *> &registers = module.registerList;
        for (const Register::Kind kind : {Register::Readable, Register::Writable, Register::ReadableAndWritable}) {
            registers.append(new Register(kind, 8, QString(), QString(), kind, &module));
        }
        QVERIFY(tools.fillCurrentRegisterList(&module, {1, 3}));
        QVERIFY(tools.fillCurrentRegisterList(&module, {1, 3})); // replaces, does not append
        QCOMPARE(tools.currentRegisterList(), QList<Register *>({registers.first(), registers.last()}));
        delete registers.takeFirst();
        QCOMPARE(tools.currentRegisterList(), QList<Register *>({registers.last()}));
    }

    void silentModuleIsRetriedAfterAnInterval()
    {
        SlowChannel channel;
        CommandCombo x = pair(1);
        CommandCombo y = pair(2);
        channel.sendCommandCombos({&y, nullptr, &x});
        QCOMPARE(channel.asked, QList<int>({2, 1})); // in the order of the list
        QCOMPARE(x.reply.value(), 10);

        channel.isSilent = true;
        x.request.setType(7);
        channel.sendCommandCombos({&x, &y});
        QCOMPARE(channel.asked, QList<int>({2, 1, 7})); // one wait for both
        QVERIFY(x.reply.status() == Command::Status::Unanswered && y.reply.status() == Command::Status::Unanswered);
        QVERIFY(channel.isSilenced());

        channel.isSilent = false;
        channel.pass(CommandHandlerInterface::retryIntervalMs - 1);
        CommandCombo other = pair(3);
        other.reply.setStatus(Command::Status::Answered);
        channel.sendCommandCombos({&other});
        QVERIFY(other.reply.status() == Command::Status::Unanswered); // at once, for every caller
        QCOMPARE(channel.asked.size(), 3);
        channel.pass(1);
        channel.sendCommandCombos({&x, &y});
        QCOMPARE(x.reply.value(), 70);
        QVERIFY(!channel.isSilenced());
        QCOMPARE(channel.statistics().exchanges, 4U);
        QCOMPARE(channel.statistics().answeredExchanges, 2U);
        QCOMPARE(channel.statistics().requests, 7U);
        QCOMPARE(channel.statistics().unanswered, 3U);
        QCOMPARE(channel.statistics().rests, 0U);
    }

    void incompleteExchangeFillsNothing_data()
    {
        QTest::addColumn<int>("answerMs");
        QTest::addColumn<int>("fitting"); // requests that are answered within the deadline
        QTest::newRow("50 ms") << 50 << 2;
        QTest::newRow("70 ms") << 70 << 0;
        QTest::newRow("waits longer than it may") << 2000 << 0;
    }

    void incompleteExchangeFillsNothing()
    {
        QFETCH(int, answerMs);
        SlowChannel channel;
        CommandCombo x = pair(1);
        CommandCombo y = pair(2);
        channel.sendCommandCombos({&x, &y});
        channel.offset = 1;
        channel.answerMs = answerMs;
        channel.sendCommandCombos({&x, &y});
        QFETCH(int, fitting);
        QCOMPARE(x.reply.value(), fitting == 2 ? 11 : 10);
        QCOMPARE(y.reply.value(), fitting == 2 ? 21 : 20);
        QCOMPARE(channel.isSilenced(), fitting == 0);
        const int longestMs = qMax(answerMs, CommandHandlerInterface::exchangeDeadlineMs + 1);
        QVERIFY(channel.statistics().lastDurationNs <= longestMs * 1000000LL);

        channel.pass(60000);
        channel.offset = 2;
        channel.sendCommandCombos({&x});
        QCOMPARE(x.reply.value(), answerMs <= CommandHandlerInterface::exchangeDeadlineMs ? 12 : 10);
    }

    void slowModuleIsLimited_data()
    {
        QTest::addColumn<int>("answerMs");
        QTest::addColumn<int>("busyMs"); // at most, in 100 s
        QTest::newRow("slow") << 50 << 10100;
        QTest::newRow("a little slow") << 5 << 10100;
        QTest::newRow("ignores the deadline") << 2000 << 12000;
        QTest::newRow("brief exchanges cost nothing") << 1 << 100000;
    }

    void slowModuleIsLimited()
    {
        QFETCH(int, answerMs);
        QFETCH(int, busyMs);
        SlowChannel channel;
        std::array<CommandCombo, 8> pairs;
        for (std::size_t index = 0; index < pairs.size(); ++index) {
            pairs[index] = pair(static_cast<unsigned short>(index + 1));
        }
        std::array<int, 4> turns{};
        channel.answerMs = answerMs;
        while (channel.nowMs < 100000) {
            for (std::size_t curve = 0; curve < turns.size(); ++curve) {
                const auto answered = channel.statistics().answeredExchanges;
                channel.sendCommandCombos({&pairs[2 * curve], &pairs[2 * curve + 1]});
                turns[curve] += static_cast<int>(channel.statistics().answeredExchanges - answered);
            }
            channel.pass(14);
        }
        const auto busy = static_cast<int>(channel.statistics().totalDurationNs / 1000000);
        QVERIFY2(busy <= busyMs, qPrintable(QString::number(busy)));
        if (answerMs > CommandHandlerInterface::exchangeDeadlineMs) {
            return; // never answers in time
        }
        const auto turnRange = std::minmax_element(turns.cbegin(), turns.cend());
        QVERIFY(*turnRange.second - *turnRange.first <= 1); // shared evenly
        QCOMPARE(channel.statistics().rests == 0U, answerMs == 1);
        QVERIFY2(busy >= 9000, qPrintable(QString::number(busy))); // uses its share
    }

    void restEndsForNewRequests()
    {
        SlowChannel channel;
        CommandCombo first = pair(1);
        CommandCombo second = pair(2);
        channel.answerMs = 60;
        channel.sendCommandCombos({&first});
        channel.sendCommandCombos({&second});
        channel.offset = 1;
        channel.sendCommandCombos({&second}); // rejected, and not repeated by this caller
        QCOMPARE(second.reply.value(), 20);
        QVERIFY(second.reply.status() == Command::Status::Answered);

        first.request.setType(9); // the reply to type 1 would be a wrong value
        channel.sendCommandCombos({&first});
        QCOMPARE(first.reply.value(), 91);
        channel.offset = 2;
        for (int tick = 0; tick < 200; ++tick) {
            channel.pass(14);
            channel.sendCommandCombos({&first});
        }
        QCOMPARE(first.reply.value(), 92);
    }
};

GUARDED_TEST(ModulesTest)
#include "ModulesTest.moc"
