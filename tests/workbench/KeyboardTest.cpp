#include "GuardedTest.h"
#include "MainWindow.h"
#include "Options.h"
#include "SceneReader.h"
#include "SceneRunner.h"
#include "Workbench.h"

#include "host/ContainerInterface.h"

#include <QAccessible>
#include <QDockWidget>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QSet>

namespace
{

constexpr int mostSteps = 300;

QString described(const QWidget *widget)
{
    return QStringLiteral("%1 \"%2\" in %3")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
             widget->parentWidget() == nullptr ? QString() : widget->parentWidget()->objectName());
}

/// What a screen reader says of the widget.
QString spokenName(QWidget *widget)
{
    QAccessibleInterface *const accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible == nullptr ? QString() : accessible->text(QAccessible::Name).trimmed();
}

/// Whether the Tab key has to come here. A window of the workspace hands the focus on to what is in it; of radio
/// buttons that belong together the chosen one is the only stop.
bool isTabStop(const QWidget *widget)
{
    if (!widget->isVisible() || !widget->isEnabled() || (widget->focusPolicy() & Qt::TabFocus) == 0 ||
        widget->focusProxy() != nullptr || widget->isWindow() ||
        qobject_cast<const QMdiSubWindow *>(widget) != nullptr) {
        return false;
    }
    const auto *const radioButton = qobject_cast<const QRadioButton *>(widget);
    return radioButton == nullptr || radioButton->isChecked();
}

} // namespace

/// The main window with the real plugin, for people who use the keyboard or have the screen read to them.
class KeyboardTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void tabReachesEverythingAndEverythingHasAName();
};

void KeyboardTest::tabReachesEverythingAndEverythingHasAName()
{
    Workbench workbench(SimulationClock::Drive::Exchanges, 1);
    QCOMPARE(workbench.loadPlugin(QStringLiteral(PLUGIN)), QString());
    const Scene scene = readSceneFile(shippedScenePath(QStringLiteral("four-curves"))).scene;
    QVERIFY(workbench.modules().add(scene.modules.constFirst(), 1));
    MainWindow window(&workbench);
    ContainerInterface *const container = window.addContainer();
    window.resize(1200, 800);
    window.showHint();
    window.show();
    window.openContainer(container);
    QCOMPARE(SceneRunner(container).apply(scene), QString());
    QApplication::setActiveWindow(&window);

    QSet<QWidget *> reached;
    for (const char *const name : {"messageDock", "recordingDock", "exchangeDock"}) {
        auto *const dock = window.findChild<QDockWidget *>(QLatin1String(name));
        QVERIFY(dock != nullptr);
        dock->show();
        dock->raise();
        QCoreApplication::processEvents();
        for (int step = 0; step < mostSteps; ++step) {
            QWidget *const focused = QApplication::focusWidget();
            QTest::keyClick(focused == nullptr ? &window : focused, Qt::Key_Tab);
            reached.insert(QApplication::focusWidget());
        }
        const QList<QWidget *> widgets = window.findChildren<QWidget *>();
        for (QWidget *const widget : widgets) {
            if (isTabStop(widget)) {
                QVERIFY2(reached.contains(widget), qPrintable(described(widget)));
                // The plot itself is the one control that the plugin leaves without a name.
                QVERIFY2(!spokenName(widget).isEmpty() || widget->inherits("Plotter"), qPrintable(described(widget)));
            }
        }
    }
    QVERIFY(reached.size() > 25);
}

GUARDED_TEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
