#include "GuardedTest.h"
#include "PluginFile.h"

#include "host/ContainerInterface.h"

#include <QFile>

#include <memory>

/// The loader against real files.
class PluginLoadingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void uselessFileIsRefused_data();
    void uselessFileIsRefused();
    void refusedFileLeavesRoomForAnother();
    void validFileGivesClonesAndIsUnmapped();

private:
    static QString fixture(const char *name)
    {
        return QStringLiteral(FIXTURE_FOLDER "/%1.so").arg(QLatin1String(name));
    }
};

void PluginLoadingTest::uselessFileIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing") << fixture("absent") << QStringLiteral("there is no such plugin file");
    QTest::newRow("folder") << QStringLiteral(FIXTURE_FOLDER) << QStringLiteral("no plugin");
    QTest::newRow("text") << QString() << QStringLiteral("no plugin");
    QTest::newRow("other interface") << fixture("other_interface") << QStringLiteral("org.example.OtherInterface/1.0");
    QTest::newRow("other kind") << fixture("tool_plugin") << QStringLiteral("calls itself \"Tool\"");
    QTest::newRow("wrong object") << fixture("wrong_object") << QStringLiteral("\"WrongObject\" is no container");
    QTest::newRow("missing symbol") << fixture("missing_symbol") << QStringLiteral("definedNowhere");
}

void PluginLoadingTest::uselessFileIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    if (path.isEmpty()) {
        path = temporaryPath(QStringLiteral("text.so"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("no plugin at all\n");
    }
    PluginFile plugin;
    const QString problem = plugin.load(path);
    QVERIFY2(problem.startsWith(path + QStringLiteral(": ")), qPrintable(problem));
    QVERIFY2(problem.contains(reason), qPrintable(problem));
    QVERIFY(!problem.contains(QLatin1Char('\n')));
    QVERIFY(plugin.root() == nullptr);
}

void PluginLoadingTest::refusedFileLeavesRoomForAnother()
{
    PluginFile plugin;
    QVERIFY(!plugin.load(fixture("wrong_object")).isEmpty());
    QCOMPARE(plugin.load(fixture("minimal_container")), QString());
    QVERIFY(plugin.root() != nullptr);
}

void PluginLoadingTest::validFileGivesClonesAndIsUnmapped()
{
    PluginFile plugin;
    QCOMPARE(plugin.load(fixture("minimal_container")), QString());
    std::unique_ptr<PluginInterface> clone(plugin.root()->clone(QStringLiteral("clone"), nullptr));
    QCOMPARE(clone->name(), QStringLiteral("clone"));
    clone.reset();
    QVERIFY(plugin.unload());
    QVERIFY(plugin.root() == nullptr);
    const QStringList expected = {QStringLiteral("clone destroyed"), QStringLiteral("root destroyed"),
                                  QStringLiteral("file unmapped")};
    QCOMPARE(messages(QtInfoMsg), expected);
}

GUARDED_TEST_MAIN(PluginLoadingTest)
#include "PluginLoadingTest.moc"
