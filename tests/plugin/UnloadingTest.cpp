#include "GuardedTest.h"
#include "PluginHarness.h"

#include "host/ExportCSV.h"

#include <QPluginLoader>

/// Unloading of the plugin's file while an export window is open.
class UnloadingTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void windowsThatOutliveTheFile()
    {
        for (int round = 0; round < 2; ++round) {
            QPluginLoader loader(QStringLiteral(PLUGIN));
            loader.setLoadHints({}); // Qt itself would keep the file mapped, other hosts do not
            auto *const root = qobject_cast<ContainerInterface *>(loader.instance());
            QVERIFY2(root != nullptr, qPrintable(loader.errorString()));
            QPointer<ExportCSV> exportWindow;
            {
                PluginHarness harness(root);
                harness.open();
                QVERIFY(harness.exported() != nullptr);
                exportWindow = harness.window->findChild<ExportCSV *>();
                exportWindow->setParent(nullptr); // a host may keep it longer than the container
            }
            QVERIFY(loader.unload());
            QVERIFY(!exportWindow.isNull());
            QCOMPARE(exportWindow->objectName(), QStringLiteral("ExportXY"));
            delete exportWindow;
        }
    }
};

GUARDED_TEST(UnloadingTest)
#include "UnloadingTest.moc"
