#include "GuardedTest.h"
#include "ScriptedCurve.h"
#include "XYPlotter.h"

#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>

/// The plugin's interface to the host: construction, opening, closing and reopening.
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
        QVERIFY(!harness.plugin->windowIcon().isNull());
        for (int curve = 0; curve < 4; ++curve) { // both buttons of a curve show its number in its colour
            const auto picture = [](const QAbstractButton *button) { return button->icon().pixmap(24).toImage(); };
            QVERIFY(!picture(harness.curveBox(curve)).isNull());
            QCOMPARE(picture(harness.radioButton(curve)), picture(harness.curveBox(curve)));
        }
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
        curve.plugin->setWindowTitle(QStringLiteral("Closed"));
        QCOMPARE(titleSpy.size(), 0); // closing disconnects all of the plugin's signals
        QVERIFY(firstWindow.isNull());
        QVERIFY(!curve.plugin.isNull() && curve.plugin->parent() == nullptr);
        curve.sample(5, 5); // ignored while closed
        curve.open();
        QCOMPARE(curve.find<QStackedWidget>("dockWidgetContentsX")->count(), 4);
        // The module lists are not refilled: the choice is kept.
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
        QCOMPARE(harness.activeTimers(), 4); // sampling, and one refresh timer for each init()
        harness.close();
        QVERIFY(!harness.plugin.isNull());
        QCOMPARE(harness.activeTimers(), 3); // closing stops the last one only
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

GUARDED_TEST(FrameTest)
#include "FrameTest.moc"
