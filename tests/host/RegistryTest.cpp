#include "GuardedTest.h"
#include "ScriptedModule.h"
#include "host/ComboBox.h"
#include "host/ContainerInterface.h"
#include "host/PluginHandler.h"
#include "host/Register.h"
#include "host/TempTools.h"

#include <QSignalSpy>

#include <functional>

namespace
{

/// Writes down what it is told, and then does what the test wants.
class Container : public ContainerInterface
{
public:
    explicit Container(PluginHandler *handler)
        : ContainerInterface(QStringLiteral("plot 1"), QStringLiteral("A plot"), 6, handler,
                             QStringLiteral(":/moreIconsII/XYPlot"), nullptr)
    {
    }

    void handleModulePlugin(KAROModuleInterface *module, QString message) override
    {
        told.append(message);
        if (onNotice) {
            onNotice(module);
        }
    }

    QStringList told;
    std::function<void(KAROModuleInterface *)> onNotice;
};

} // namespace

class RegistryTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void keepsModulesInOrderOfArrival()
    {
        PluginHandler handler;
        auto *const first = new ScriptedModule(QStringLiteral("z"));
        QVERIFY(handler.addModulePlugin(first));
        QVERIFY(handler.addModulePlugin(new ScriptedModule(QStringLiteral("a"))));
        QCOMPARE(handler.getModulePluginKeys(false), QStringList({QStringLiteral("z"), QStringLiteral("a")}));
        QCOMPARE(handler.getModulePluginKeys(true), QStringList({QStringLiteral("a"), QStringLiteral("z")}));
        QCOMPARE(handler.getModulePlugin(QStringLiteral("z")), first);

        ScriptedModule sameKey(QStringLiteral("z"));
        ScriptedModule noKey{QString()};
        QVERIFY(!handler.addModulePlugin(&sameKey));
        QVERIFY(!handler.addModulePlugin(&noKey));
        QVERIFY(!handler.addModulePlugin(nullptr));
        QVERIFY(!handler.removeModulePlugin(QStringLiteral("b")));
    }

    void tellsOfRemovalBetweenRegistryAndEnd()
    {
        PluginHandler handler;
        Container container(&handler);
        QCOMPARE(container.pluginHandler(), &handler);
        const QPointer<KAROModuleInterface> module = new ScriptedModule(QStringLiteral("m"));
        handler.addModulePlugin(module);
        container.onNotice = [&](KAROModuleInterface *notified) {
            QCOMPARE(notified, module.data());
            QVERIFY(handler.getModulePlugin(QStringLiteral("m")) == nullptr);
        };
        QVERIFY(handler.removeModulePlugin(QStringLiteral("m")));
        QVERIFY(module.isNull());
        QCOMPARE(container.told, QStringList({QStringLiteral("Scripted"), QStringLiteral("Scripted")}));
    }

    void survivesWhatContainersDoOnANotice()
    {
        PluginHandler handler;
        Container first(&handler);
        auto *const dying = new Container(&handler);
        Container last(&handler);
        first.onNotice = [&](KAROModuleInterface *) {
            first.onNotice = nullptr;
            delete dying;
        };
        handler.addModulePlugin(new ScriptedModule(QStringLiteral("m")));
        QCOMPARE(last.told.size(), 1);

        // The last one hears of the removal while the arrival is still being told; the arrival would be a dead pointer.
        first.onNotice = [&](KAROModuleInterface *) {
            first.onNotice = nullptr;
            handler.removeModulePlugin(QStringLiteral("n"));
        };
        last.told.clear();
        handler.addModulePlugin(new ScriptedModule(QStringLiteral("n")));
        QCOMPARE(last.told.size(), 1);
        QCOMPARE(handler.getModulePluginKeys(false), QStringList(QStringLiteral("m")));
    }

    void forgetsAModuleDestroyedElsewhere()
    {
        PluginHandler handler;
        Container container(&handler);
        auto *const module = new ScriptedModule(QStringLiteral("m"));
        handler.addModulePlugin(module);
        container.onNotice = [](KAROModuleInterface *notified) { QVERIFY(notified == nullptr); };
        delete module;
        QVERIFY(handler.getModulePlugin(QStringLiteral("m")) == nullptr);
        QCOMPARE(container.told.size(), 2);
    }

    void containerOutlivesItsHandler()
    {
        auto *const handler = new PluginHandler;
        Container container(handler);
        delete handler;
        QVERIFY(container.pluginHandler() == nullptr);
        QCOMPARE(container.objectName(), QStringLiteral("plot 1"));
        QCOMPARE(container.windowTitle(), QStringLiteral("A plot"));
        QVERIFY(!container.windowIcon().isNull());
    }

    void registerListHoldsOnlyTheLiving()
    {
        TempTools tools(1, 1, nullptr, QString(), 149, 147);
        QVERIFY(!tools.fillCurrentRegisterList(nullptr, {1, 2, 3}));
        auto *const module = new ScriptedModule(QStringLiteral("m"));
        for (const Register::Kind kind : {Register::Readable, Register::Writable, Register::ReadableAndWritable}) {
            module->registerList.append(new Register(kind, 8, QString(), QString(), kind, module));
        }
        QVERIFY(tools.fillCurrentRegisterList(module, {1, 3}));
        QVERIFY(tools.fillCurrentRegisterList(module, {1, 3})); // replaces, does not append
        QList<Register *> expected = module->registerList;
        expected.removeAt(1);
        QCOMPARE(tools.currentRegisterList(), expected);

        delete expected.takeFirst();
        QCOMPARE(tools.currentRegisterList(), expected);
        delete module;
        QVERIFY(tools.currentRegisterList().isEmpty());
    }

    void comboBoxLeavesABlankCurrentEntry()
    {
        ComboBox box;
        box.addItems({QStringLiteral("a"), QStringLiteral("b")});
        box.setCurrentIndex(1);
        QCOMPARE(box.lastIndex(), 0);
        QSignalSpy changes(&box, SIGNAL(currentIndexChanged(int)));
        box.clear();
        QCOMPARE(box.count(), 1);
        QCOMPARE(box.currentIndex(), 0);
        QVERIFY(box.currentText().isEmpty());
        QCOMPARE(changes.last().first().toInt(), 0);

        changes.clear();
        box.resetLastIndex();
        QCOMPARE(box.lastIndex(), -1);
        QVERIFY(changes.isEmpty());
        box.setCurrentIndex(-1);
        box.clear(); // also from no row at all
        QCOMPARE(changes.last().first().toInt(), 0);
    }
};

GUARDED_TEST_MAIN(RegistryTest)
#include "RegistryTest.moc"
