#include "GuardedTest.h"
#include "window/PluginFile.h"

/// The loader against real files.
class PluginLoadingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void uselessFileIsRefused_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("reason");
        const auto row = [](const QString &file, const QString &reason) {
            QTest::newRow(qPrintable(file)) << file << reason;
        };
        row("/absent.so", "there is no such plugin file");
        row("/", "no plugin");
        row("/CTestTestfile.cmake", "no plugin");
        row("/other_interface.so", "org.example.OtherInterface/1.0");
        row("/wrong_object.so", "\"WrongObject\" is no container");
        row("/missing_symbol.so", "definedNowhere");
    }

    void uselessFileIsRefused()
    {
        QFETCH(QString, file);
        QFETCH(QString, reason);
        PluginFile plugin;
        const QString problem = plugin.load(QStringLiteral(FIXTURE_FOLDER) + file);
        QVERIFY2(problem.startsWith(QStringLiteral(FIXTURE_FOLDER) + file + QStringLiteral(": ")), qPrintable(problem));
        QVERIFY2(problem.contains(reason) && !problem.contains(QLatin1Char('\n')), qPrintable(problem));
        QVERIFY(plugin.root() == nullptr);

        // It leaves room for another, which in turn leaves nothing behind.
        QCOMPARE(plugin.load(FIXTURE_FOLDER "/minimal_container.so"), QString());
        QVERIFY(plugin.root() != nullptr);
        QVERIFY(plugin.unload());
        QCOMPARE(messages(QtInfoMsg), QStringList({"root destroyed", "file unmapped"}));
    }
};

GUARDED_TEST_MAIN(PluginLoadingTest)
#include "PluginLoadingTest.moc"
