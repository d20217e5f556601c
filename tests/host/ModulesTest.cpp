#include "GuardedTest.h"
#include "ScriptedModule.h"
#include "host/ContainerInterface.h"
#include "host/PluginHandler.h"
#include "host/Register.h"
#include "host/TempTools.h"

#include <functional>

namespace
{

/// Writes down what it is told, and then does what the test wants.
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
        told.append(module == nullptr ? QStringLiteral("gone") : message + (isListed ? " comes" : " leaves"));
        onNotice();
    }

    QStringList told;
    std::function<void()> onNotice = [] {};
};

} // namespace

class ModulesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void registryTellsWhoComesAndLeaves()
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
        QCOMPARE(container.told, QStringList({"Scripted comes", "Scripted comes", "Scripted leaves", "gone"}));
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
        QCOMPARE(last.told.size(), 1);

        // The last one hears of the removal while the arrival is still being told; the arrival would be a dead pointer.
        first.onNotice = [&] { handler.removeModulePlugin(QStringLiteral("n")); };
        handler.addModulePlugin(new ScriptedModule(QStringLiteral("n")));
        QCOMPARE(last.told.size(), 2);
    }

    void registerListHoldsOnlyTheLiving()
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

    void channelWaitsForASilentModuleOnceInAWhile()
    {
        ScriptedChannel channel;
        QList<int> asked;
        channel.answer = [&asked](const Command &request) {
            asked.append(request.type());
            return request.type() * 10;
        };
        CommandCombo first;
        CommandCombo second;
        first.request.setType(0xFF);
        second.request.setType(3);
        channel.sendCommandCombos({&second, &first});
        QCOMPARE(first.reply.value(), 2550);
        channel.isSilent = true;
        first.request.setType(1);
        channel.sendCommandCombos({&first, &second});
        QCOMPARE(asked, QList<int>({3, 0xFF, 1})); // in their order, and one wait for both
        QVERIFY(first.reply.status() == Command::Status::Unanswered);
        QVERIFY(second.reply.status() == Command::Status::Unanswered);
        QCOMPARE(first.reply.value(), 2550); // the old value, not what was half received

        channel.isSilent = false;
        channel.sendCommandCombos({&second});
        QCOMPARE(asked.size(), 3);
        const auto isAnswered = [&] {
            channel.sendCommandCombos({&second});
            return second.reply.status() == Command::Status::Answered;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isAnswered(), CommandHandlerInterface::retryIntervalMs * 4);
    }
};

GUARDED_TEST_MAIN(ModulesTest)
#include "ModulesTest.moc"
