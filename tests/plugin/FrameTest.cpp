#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>

/// What the host sees of the plugin, and the life of its window.
class FrameTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void firstOpening()
    {
        PluginHarness harness(&m_root, QString());
        harness.open();
        QVERIFY(!m_root.property("dpShowOnToolbar").isValid()); // of the clones only
        QCOMPARE(harness.plugin->property("dpShowOnToolbar"), QVariant(true));
        QVERIFY(harness.plugin->version().startsWith(QStringLiteral("4.6.0 - container_xy_plot;")));
        QCOMPARE(harness.plugin->objectName(), QStringLiteral("XYPlotter")); // only because it had no name
        QCOMPARE(harness.plugin->property("dpWindowFlags"), QVariant(18U));
        QCOMPARE(harness.plugin->property("dpWindowModal"), QVariant(false));
        QCOMPARE(harness.plugin->property("dpSizeGrip"), QVariant(true));
        QCOMPARE(harness.find<QSlider>("horizontalSliderRate")->toolTip(), QStringLiteral("Intervall 14 ms"));
        QVERIFY(harness.find("horizontalSliderRate")->isHidden() && harness.find("graphicsView")->isHidden());
        QVERIFY(harness.radioButton(0)->isChecked());
        const auto *const pages = harness.find<QStackedWidget>("dockWidgetContentsY");
        QCOMPARE(pages->count(), 4);
        QCOMPARE(pages->widget(3)->objectName(), QStringLiteral("page3dockWidgetContentsY"));
    }

    void closingAndReopening()
    {
        ScriptedCurve curve(&m_root);
        curve.sample(-100, -100);
        curve.sample(100, -100);
        const QVector<QPointF> points = curve.points();
        const QPointer<QDialog> firstWindow = curve.window;
        const QSignalSpy titleSpy(curve.plugin, SIGNAL(windowTitleChanged(QString)));
        curve.close();
        curve.plugin->setWindowTitle(QStringLiteral("nobody hears of it"));
        QCOMPARE(titleSpy.size(), 0); // with the window, the plugin leaves everyone who listens to it
        QVERIFY(firstWindow.isNull());
        QVERIFY(!curve.plugin.isNull() && curve.plugin->parent() == nullptr);
        curve.sample(5, 5); // goes on while closed, and is dropped
        curve.open();
        QCOMPARE(curve.find<QStackedWidget>("dockWidgetContentsX")->count(), 4);
        // The module lists are not refilled: the choice still stands.
        QCOMPARE(curve.moduleBox(0, 'X')->currentText(), QStringLiteral("  S/m"));
        QCOMPARE(curve.points(), points);
        curve.sample(7, 7);
        QCOMPARE(curve.points().size(), 3);
    }

    void openingTwiceWithoutClosing()
    {
        PluginHarness harness(&m_root);
        harness.open();
        harness.plugin->init(harness.window);
        harness.plugin->init(harness.window);
        QCOMPARE(harness.activeTimers(), 4); // sampling; and every opening starts a refresh timer of its own
        harness.close();
        QVERIFY(!harness.plugin.isNull());
        QCOMPARE(harness.activeTimers(), 3); // and a closing ends the last of them
    }

    void openingWithoutItsWindow()
    {
        expectMessage(QtCriticalMsg, QRegularExpression("^virtual void XYPlotter::init\\(QWidget\\*\\) QWidget\\(0x.+"
                                                        "QWidget\\(0x0\\)"));
        expectMessage(QtWarningMsg, QRegularExpression("QObject::connect"));
        const QScopedPointer<PluginInterface> plugin(m_root.clone(QStringLiteral("Plot"), nullptr));
        QWidget window;
        plugin->init(&window);
        QVERIFY(plugin->findChild<QWidget *>(QStringLiteral("widgetPlot")) != nullptr);
    }

    void callsAtBadMoments()
    {
        PluginHarness harness(&m_root);
        harness.handler.addModulePlugin(new ScriptedModule(QStringLiteral("S/m")));
        QVERIFY(QMetaObject::invokeMethod(harness.plugin, "updateModuleList")); // before the first opening
        harness.open();
        QCOMPARE(harness.moduleBox(0, 'X')->count(), 1);
        for (const char *const slot : {"btnClicked", "setModule", "setMotorTable"}) { // without a sender
            QVERIFY(QMetaObject::invokeMethod(harness.plugin, slot));
            QVERIFY(QMetaObject::invokeMethod(harness.plugin, slot, Q_ARG(int, 1)));
        }
        const QStandardItemModel model(1, 3);
        QVERIFY(QMetaObject::invokeMethod(harness.plugin, "itemClicked", Q_ARG(QModelIndex, model.index(0, 0))));
    }

private:
    XYPlotter m_root;
};

GUARDED_TEST_MAIN(FrameTest)
#include "FrameTest.moc"
