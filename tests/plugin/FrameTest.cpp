#include "GuardedTest.h"
#include "PluginHarness.h"
#include "ScriptedModule.h"
#include "XYPlotter.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QDockWidget>
#include <QGraphicsView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>

/// Entry, slot table, life cycle and window form.
class FrameTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void identity();
    void slotTable();
    void formTree();
    void formProperties();
    void firstOpening();
    void closingAndReopening();
    void openingTwiceWithoutClosing();
    void openingWithoutItsWindow();
    void callsAtBadMoments();

private:
    XYPlotter m_root;
};

void FrameTest::identity()
{
    QCOMPARE(m_root.version(), QStringLiteral("4.6.0 - container_xy_plot;Plugin-Interface.4.6.0.container_xy_plot;"
                                              "Plugin ;Plugin.Interface."));
    QCOMPARE(m_root.objectName(), QStringLiteral("undefined"));
    QVERIFY(!m_root.property("dpShowOnToolbar").isValid());
    const PluginHarness harness(&m_root);
    QCOMPARE(harness.plugin->objectName(), QStringLiteral("Plot"));
    QCOMPARE(harness.plugin->windowTitle(), QStringLiteral("XY-Plotter"));
    QCOMPARE(harness.plugin->property("dpShowOnToolbar"), QVariant(true));
    QCOMPARE(harness.plugin->pluginHandler(), &harness.handler);
    QVERIFY(m_root.qt_metacast("XYPlotter") != nullptr);
    QVERIFY(m_root.qt_metacast(ContainerInterface_iid) != nullptr);
    QVERIFY(m_root.qt_metacast("ContainerInterface") != nullptr);
    QVERIFY(m_root.qt_metacast(nullptr) == nullptr);
    QVERIFY(m_root.qt_metacast("Plotter") == nullptr);
}

void FrameTest::slotTable()
{
    const QStringList expected{"updateModuleList()",
                               "btnClicked(int)",
                               "btnClicked()",
                               "setModule(int)",
                               "setModule()",
                               "setMotorTable(int)",
                               "setMotorTable()",
                               "log(bool)",
                               "timerEvent(QTimerEvent*)",
                               "setRate(int)",
                               "itemClicked(QModelIndex)",
                               "finished(int)",
                               "handleModulePlugin(KAROModuleInterface*,QString)"};
    QStringList found;
    const QMetaObject &meta = XYPlotter::staticMetaObject;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.access(), QMetaMethod::Private);
        found.append(QString::fromLatin1(method.methodSignature()));
    }
    QCOMPARE(found, expected);
    QCOMPARE(meta.propertyCount(), meta.superClass()->propertyCount());
    QCOMPARE(QString::fromLatin1(meta.superClass()->className()), QStringLiteral("ContainerInterface"));
    QCOMPARE(meta.method(meta.methodCount() - 1).parameterType(0), qMetaTypeId<KAROModuleInterface *>());
}

void FrameTest::formTree()
{
    PluginHarness harness(&m_root, QString());
    harness.open();
    QCOMPARE(harness.plugin->objectName(), QStringLiteral("XYPlotter")); // only because it had no name

    const auto *const top = qobject_cast<QHBoxLayout *>(harness.plugin->layout());
    const auto *const left = qobject_cast<QVBoxLayout *>(top->itemAt(0)->layout());
    QStringList order;
    for (int item = 0; item < left->count(); ++item) {
        order.append(left->itemAt(item)->widget() != nullptr ? left->itemAt(item)->widget()->objectName()
                                                             : left->itemAt(item)->layout()->objectName());
    }
    QCOMPARE(order, QStringList({"btnRefresh", "RadioButtonFrame", "dockWidgetY", "dockWidgetX", "horizontalLayout_2",
                                 "graphicsView", "horizontalLayout_4"}));
    const QLayout *const buttons = left->itemAt(6)->layout();
    QCOMPARE(buttons->itemAt(3)->widget(), harness.find("cbLog"));
    QCOMPARE(top->itemAt(1)->widget(), harness.find("widgetPlot"));
    QCOMPARE(harness.find("widgetPlot")->layout()->itemAt(1)->widget(), harness.plot());

    const auto *const radios = harness.find<QHBoxLayout>("horizontalLayoutActPlot");
    QCOMPARE(radios->count(), 6);
    for (int curve = 0; curve < 4; ++curve) {
        QCOMPARE(radios->itemAt(curve + 1)->widget(), harness.radioButton(curve));
        QCOMPARE(radios->stretch(curve + 1), 0);
        QCOMPARE(harness.radioButton(curve)->property("ColorName"), harness.curveBox(curve)->property("ColorName"));
        QVERIFY(!harness.radioButton(curve)->icon().isNull());
    }
    for (const int spacer : {0, 5}) {
        QVERIFY(radios->itemAt(spacer)->spacerItem() != nullptr);
        QCOMPARE(radios->stretch(spacer), 1);
        QCOMPARE(radios->itemAt(spacer)->sizeHint(), QSize(80, 28));
    }
    for (const char axis : {'X', 'Y'}) {
        const auto *const pages = harness.find<QStackedWidget>(QStringLiteral("dockWidgetContents") + axis);
        QCOMPARE(pages->count(), 4);
        for (int curve = 0; curve < 4; ++curve) {
            QCOMPARE(pages->widget(curve)->objectName(),
                     QStringLiteral("page%1dockWidgetContents%2").arg(curve).arg(axis));
            QCOMPARE(pages->widget(curve)->layout()->contentsMargins(), QMargins(1, 1, 1, 1));
        }
        QCOMPARE(harness.find(QStringLiteral("dockWidget") + axis)->windowTitle(),
                 QStringLiteral(" Device %1").arg(axis));
        QCOMPARE(harness.find<QDockWidget>(QStringLiteral("dockWidget") + axis)->features(),
                 QDockWidget::NoDockWidgetFeatures);
    }
}

void FrameTest::formProperties()
{
    using Policy = QSizePolicy;
    struct Row
    {
        const char *name;
        Policy::Policy horizontal;
        Policy::Policy vertical;
        const char *text;
        const char *styleSheet;
    };
    const Row rows[] = {
        {"btnRefresh", Policy::Minimum, Policy::Fixed, "Refresh",
         "border-bottom-left-radius:0px;\nborder-bottom-right-radius:0px;"},
        {"RadioButtonFrame", Policy::Maximum, Policy::Preferred, "", ""},
        {"dockWidgetY", Policy::Maximum, Policy::Preferred, "", ""},
        {"dockWidgetContentsX", Policy::Minimum, Policy::Preferred, "", ""},
        {"horizontalSliderRate", Policy::Minimum, Policy::Minimum, "", ""},
        {"graphicsView", Policy::Preferred, Policy::MinimumExpanding, "", ""},
        {"btnCamera", Policy::Minimum, Policy::Fixed, "Screenshot",
         "border-bottom-right-radius:0px;\nborder-top-left-radius:0px;\nborder-top-right-radius:0px;\n"
         "border-right-width:0px;"},
        {"btnResetData", Policy::Minimum, Policy::Fixed, "Clear buffer",
         "border-radius:0px;\nborder-right-width:0px;\nborder-left-width:0px"},
        {"btnExport", Policy::Minimum, Policy::Minimum, "Export",
         "border-top-right-radius:0px;\nborder-top-left-radius:0px;\nborder-bottom-left-radius:0px;\n"
         "border-left-width:0px"},
        {"cbLog", Policy::Minimum, Policy::Fixed, "Log", ""},
        {"widgetPlot", Policy::MinimumExpanding, Policy::MinimumExpanding, "", ""},
    };
    PluginHarness harness(&m_root);
    harness.open();
    for (const Row &row : rows) {
        const QWidget *const widget = harness.find(QString::fromLatin1(row.name));
        QVERIFY2(widget != nullptr, row.name);
        QCOMPARE(widget->sizePolicy().horizontalPolicy(), row.horizontal);
        QCOMPARE(widget->sizePolicy().verticalPolicy(), row.vertical);
        QCOMPARE(widget->property("text").toString(), QString::fromLatin1(row.text));
        QCOMPARE(widget->styleSheet(), QString::fromLatin1(row.styleSheet));
        const auto *const button = qobject_cast<const QAbstractButton *>(widget);
        QVERIFY2(button == nullptr || !button->icon().pixmap(16, 16).isNull(), row.name);
    }
}

void FrameTest::firstOpening()
{
    PluginHarness harness(&m_root);
    harness.open();
    QCOMPARE(harness.plugin->objectName(), QStringLiteral("Plot"));
    QCOMPARE(harness.plugin->property("dpWindowFlags"), QVariant(18U));
    QCOMPARE(harness.plugin->property("dpWindowModal"), QVariant(false));
    QCOMPARE(harness.plugin->property("dpSizeGrip"), QVariant(true));
    QVERIFY(
        harness.plugin->styleSheet().startsWith(QStringLiteral("QComboBox, QFrame#RadioButtonFrame{border-radius")));
    QVERIFY(harness.plugin->styleSheet().endsWith(QStringLiteral("border-radius: 12px}*/")));
    const auto *const slider = harness.find<QSlider>("horizontalSliderRate");
    QCOMPARE(slider->value(), 86);
    QCOMPARE(slider->toolTip(), QStringLiteral("Intervall 14 ms"));
    QCOMPARE(slider->statusTip(), slider->toolTip());
    QVERIFY(slider->isHidden());
    QVERIFY(harness.find("labelRate")->isHidden());
    QVERIFY(harness.find("graphicsView")->isHidden());
    QVERIFY(harness.radioButton(0)->isChecked());
    QVERIFY(harness.find<QCheckBox>("cbLog")->layoutDirection() == Qt::RightToLeft);
    // Whatever has only an icon tells a screen reader what it is.
    for (const QAbstractButton *const button : harness.plugin->findChildren<QAbstractButton *>()) {
        QVERIFY2(!button->text().isEmpty() || !button->accessibleName().isEmpty() ||
                     button->objectName().startsWith(QStringLiteral("qt_")) || button->inherits("QTableCornerButton"),
                 qPrintable(button->metaObject()->className() + button->objectName()));
    }
}

void FrameTest::closingAndReopening()
{
    PluginHarness harness(&m_root);
    harness.handler.addModulePlugin(new ScriptedModule(QStringLiteral("S/m"), 2));
    harness.open();
    QVERIFY(PluginHarness::pick(harness.moduleBox(0, 'X'), QStringLiteral("S/m")));
    const QPointer<QDialog> firstWindow = harness.window;
    const QSignalSpy titleSpy(harness.plugin, SIGNAL(windowTitleChanged(QString)));
    harness.close();
    harness.plugin->setWindowTitle(QStringLiteral("nobody hears of it"));
    QCOMPARE(titleSpy.size(), 0); // with the window, the plugin leaves everyone who listens to it
    QVERIFY(firstWindow.isNull());
    QVERIFY(!harness.plugin.isNull());
    QVERIFY(harness.plugin->parent() == nullptr);
    harness.open();
    QCOMPARE(harness.find<QStackedWidget>("dockWidgetContentsX")->count(), 4);
    QCOMPARE(harness.find<QHBoxLayout>("horizontalLayoutActPlot")->count(), 6);
    // The module lists are not refilled: the choice still stands.
    QCOMPARE(harness.moduleBox(0, 'X')->currentText(), QStringLiteral("  S/m"));
    harness.close();
    QVERIFY(harness.plugin->parent() == nullptr);
}

void FrameTest::openingTwiceWithoutClosing()
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

void FrameTest::openingWithoutItsWindow()
{
    expectMessage(QtCriticalMsg, QRegularExpression(QStringLiteral(
                                     "^virtual void XYPlotter::init\\(QWidget\\*\\) QWidget\\(0x.+QWidget\\(0x0\\)")));
    expectMessage(QtWarningMsg, QRegularExpression(QStringLiteral("QObject::connect")));
    const QScopedPointer<PluginInterface> plugin(m_root.clone(QStringLiteral("Plot"), nullptr));
    QWidget window;
    plugin->init(&window);
    QVERIFY(plugin->findChild<QWidget *>(QStringLiteral("widgetPlot")) != nullptr);
}

void FrameTest::callsAtBadMoments()
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

GUARDED_TEST_MAIN(FrameTest)
#include "FrameTest.moc"
