#include "window/WindowState.h"
#include "GuardedTest.h"
#include "window/AppearanceMenu.h"
#include "window/Preferences.h"

#include "host/AppSettings.h"

namespace
{

/// A window with a dock, as it is kept between runs.
struct KeptWindow
{
    KeptWindow()
    {
        dock->setObjectName("dock");
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    }

    QMainWindow window;
    QDockWidget *const dock = new QDockWidget("Dock");
};

} // namespace

/// What is kept between runs: the window's place, palette and language.
class WindowStateTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void windowComesBackOnScreen_data()
    {
        const QRect left(0, 0, 1920, 1080);
        const QRect right(1920, 100, 1280, 720);
        const QRect small(0, 30, 1024, 570); // below a bar
        testRows<QRect, QList<QRect>, QRect>(
            {"was", "screens", "expected"},
            {{"where it was", {5, 6, 700, 500}, {left}, {5, 6, 700, 500}},
             {"second screen", {2000, 200, 700, 500}, {left, right}, {2000, 200, 700, 500}},
             {"second screen is gone", {2000, 200, 700, 500}, {left}, {1220, 200, 700, 500}},
             {"far off", {-9000, 90000, 700, 500}, {left, right}, {0, 580, 700, 500}},
             {"above the bar", {10, -20, 700, 500}, {small}, {10, 30, 700, 500}},
             {"too large", {100, 100, 1920, 1080}, {small}, small},
             {"more on the right one of two", {1700, 90, 700, 500}, {left, right}, {1920, 100, 700, 500}},
             {"no screen", {1, 2, 3, 4}, {}, {1, 2, 3, 4}}});
    }

    void windowComesBackOnScreen()
    {
        QFETCH(QRect, was);
        QFETCH(QList<QRect>, screens);
        QTEST(WindowState::onScreen(was, screens), "expected");
    }

    void windowIsAsItWas()
    {
        {
            KeptWindow first;
            new WindowState(&first.window);
            first.window.resize(610, 470);
            first.window.move(40, 30);
            first.window.show();
            first.window.addDockWidget(Qt::BottomDockWidgetArea, first.dock);
            first.dock->hide();
            first.window.close();
        }
        KeptWindow second;
        new WindowState(&second.window);
        QCOMPARE(second.window.size(), QSize(610, 470));
        QCOMPARE(second.window.pos(), QPoint(40, 30));
        QVERIFY(second.window.dockWidgetArea(second.dock) == Qt::BottomDockWidgetArea && second.dock->isHidden());
        second.window.showMaximized();
        second.window.close();
        KeptWindow third;
        new WindowState(&third.window);
        QVERIFY(third.window.isMaximized());
    }

    /// Qt restores what it is given without a check, and crashes over some of it.
    void damagedSettingsAreLeftOut()
    {
        const QString docks = QStringLiteral("Workbench/Window/Docks");
        const QString place = QStringLiteral("Workbench/Window/Place");
        QByteArray stored;
        {
            KeptWindow first;
            new WindowState(&first.window);
            first.dock->hide();
            first.window.close();
            stored = AppSettings().value(docks).toByteArray();
        }
        const int step = qMax(1, stored.size() / 50);
        for (int at = 0; at < stored.size(); at += step) {
            QByteArray damaged = stored;
            damaged[at] = static_cast<char>(damaged.at(at) ^ 1);
            AppSettings().setValue(docks, at == 0 ? QByteArray("garbage") : damaged);
            AppSettings().setValue(place, at == 0 ? QVariant("nowhere") : QRect(INT_MIN, 0, INT_MAX, INT_MAX));
            const KeptWindow second;
            const QSize usual = second.window.size();
            new WindowState(const_cast<QMainWindow *>(&second.window));
            QVERIFY2(!second.dock->isHidden() && second.window.size() == usual, qPrintable(QString::number(at)));
        }
        AppSettings().setValue(docks, stored);
        const KeptWindow third;
        new WindowState(const_cast<QMainWindow *>(&third.window));
        QVERIFY(third.dock->isHidden());
    }

    void paletteChangesWhileWindowsAreOpen()
    {
        const QPalette system = QApplication::palette();
        QMainWindow window;
        auto *const content = new QWidget;
        auto *const layout = new QVBoxLayout(content);
        layout->addWidget(new QComboBox);
        layout->addWidget(new QCheckBox);
        window.setCentralWidget(content);
        auto *const menu = window.menuBar()->addMenu("View");
        new AppearanceMenu(&window, menu, {"de", "en"});
        window.show();
        for (const char *const name : {"System", "Dark", "Light", "Dark", "System", "System"}) {
            partCalled<QAction>(*menu, name)->trigger();
            QCoreApplication::processEvents();
            const QColor ground = window.grab().toImage().pixelColor(window.width() / 2, window.height() - 2);
            const bool isDark = qstrcmp(name, "Dark") == 0;
            QVERIFY2((ground.lightness() < 100) == isDark, name);
        }
        QCOMPARE(QApplication::palette().color(QPalette::Window), system.color(QPalette::Window));
        QVERIFY(Preferences::palette() == PaletteChoice::System);
        partCalled<QAction>(*menu, "Dark")->trigger();
        QVERIFY(Preferences::palette() == PaletteChoice::Dark && currentPalette() == PaletteChoice::Dark);
        partCalled<QAction>(*menu, "System")->trigger();
    }

    void languageIsForTheNextStart()
    {
        QMainWindow window;
        auto *const menu = window.menuBar()->addMenu("View");
        new AppearanceMenu(&window, menu, {"de", "en"});
        partCalled<QAction>(*menu, "Deutsch")->trigger();
        QCOMPARE(Preferences::language(), QString("de"));
        QVERIFY(window.statusBar()->currentMessage().contains("next start"));
        partCalled<QAction>(*menu, "As the System")->trigger();
        QCOMPARE(Preferences::language(), QString());
    }
};

GUARDED_TEST(WindowStateTest)
#include "WindowStateTest.moc"
