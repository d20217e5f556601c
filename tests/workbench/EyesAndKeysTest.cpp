#include "GrowingPlot.h"
#include "window/ContainerWindow.h"
#include "window/Contrast.h"
#include "window/Palettes.h"
#include "window/PlotMenu.h"
#include "window/ShortcutList.h"
#include "window/Workspace.h"

namespace
{

/// Whether a person does something with the widget.
bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) != nullptr ||
           qobject_cast<const QComboBox *>(widget) != nullptr || qobject_cast<const QLineEdit *>(widget) != nullptr ||
           qobject_cast<const QAbstractItemView *>(widget) != nullptr;
}

/// Whether the widget, or what it is a part of, says what it is for.
bool isExplained(const QWidget *widget)
{
    for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
        if (!widget->toolTip().isEmpty() || !widget->whatsThis().isEmpty()) {
            return true;
        }
    }
    return false;
}

/// The number of visible edges in a button's icon, painted on the background of its parent.
int edgesOf(QAbstractButton *button)
{
    button->setText(QString());
    QCoreApplication::processEvents();
    QWidget *const window = button->window();
    const QImage image = window->grab(QRect(button->mapTo(window, QPoint()), button->size())).toImage();
    // What is the indicator of a box is left out.
    const bool isPlain = qobject_cast<QPushButton *>(button) != nullptr;
    const int indicator = isPlain ? 2 : button->style()->pixelMetric(QStyle::PM_IndicatorWidth) + 4;
    const bool isLeft = button->layoutDirection() == Qt::LeftToRight;
    const QRect part =
        isLeft ? image.rect().adjusted(indicator, 2, -4, -4) : image.rect().adjusted(2, 2, -indicator - 2, -4);
    int edges = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const auto differs = [&](int otherX, int otherY) {
                return Contrast::ratio(image.pixelColor(x, y), image.pixelColor(otherX, otherY)) >=
                       Contrast::minimumForIcons;
            };
            edges += differs(x + 2, y) || differs(x, y + 2) ? 1 : 0;
        }
    }
    return edges;
}

} // namespace

/// Accessibility of the window: contrast, sizes, keys, tool tips and descriptions.
class EyesAndKeysTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void contrastIsThatOfTheGuidelines()
    {
        QCOMPARE(Contrast::ratio(Qt::black, Qt::white), 21.0);
        QCOMPARE(qRound(100 * Contrast::ratio(Qt::white, QColor(118, 118, 118))), 454);
        QImage half(2, 1, QImage::Format_ARGB32);
        half.setPixelColor(0, 0, Qt::black);
        half.setPixelColor(1, 0, QColor(0, 0, 0, 130)); // a middle grey when it is upon white
        QCOMPARE(Contrast::visiblePart(half, Qt::white), 1.0);
        QCOMPARE(Contrast::visiblePart(half, QColor(60, 60, 60)), 0.0);
    }

    void palettesCanBeRead_data()
    {
        // That of the platform here is a light one, without a style of its own.
        testRows<bool>({"isDark"}, {{"light", false}, {"dark", true}, {"system", false}});
    }

    void palettesCanBeRead()
    {
        QFETCH(bool, isDark);
        applyPalette(*paletteChoice(QTest::currentDataTag()));
        const QPalette palette = QApplication::palette();
        using Role = QPalette::ColorRole;
        const std::tuple<Role, Role, double> pairs[] = {
            {QPalette::WindowText, QPalette::Window, Contrast::minimumForText},
            {QPalette::Text, QPalette::Base, Contrast::minimumForText},
            {QPalette::Text, QPalette::AlternateBase, Contrast::minimumForText},
            {QPalette::ButtonText, QPalette::Button, Contrast::minimumForText},
            {QPalette::ButtonText, QPalette::Midlight, Contrast::minimumForText}, // under the mouse
            {QPalette::ToolTipText, QPalette::ToolTipBase, Contrast::minimumForText},
            {QPalette::HighlightedText, QPalette::Highlight, Contrast::minimumForText},
            {QPalette::Link, QPalette::Base, Contrast::minimumForText},
            {QPalette::Light, QPalette::Shadow, Contrast::minimumForText},      // labels of plots
            {QPalette::Highlight, QPalette::Window, Contrast::minimumForIcons}, // the focus
            {QPalette::Highlight, QPalette::Shadow, Contrast::minimumForIcons},
        };
        for (const auto &[text, ground, minimum] : pairs) {
            const double ratio = Contrast::ratio(palette.color(text), palette.color(ground));
            QVERIFY2(ratio >= minimum, qPrintable(QString("%1 on %2: %3").arg(text).arg(ground).arg(ratio)));
        }
        for (const Role text : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            const int disabled = palette.color(QPalette::Disabled, text).lightness();
            QVERIFY(qAbs(disabled - palette.color(text).lightness()) > 50);
        }
        QCOMPARE(palette.color(QPalette::Window).lightness() < 100, isDark);
        // The colours of curves are given, and legends are written in them.
        const GrowingPlot plot("four-curves");
        const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(plot.container);
        for (const QCheckBox *const box : boxes) {
            const QColor curve(box->property("ColorName").toString());
            QVERIFY(Contrast::ratio(curve, palette.color(QPalette::Shadow)) > 3.9);
        }
        // All boxes and buttons of the plot's window, as they are painted.
        int count = 0;
        for (QAbstractButton *const button : partsOf<QAbstractButton>(*plot.container)) {
            if (button->isVisible() && !button->icon().isNull() && !button->iconSize().isEmpty()) {
                ++count;
                QVERIFY2(edgesOf(button) >= 20,
                         qPrintable(button->objectName() + button->toolTip() + button->accessibleName()));
            }
        }
        QVERIFY2(count >= 15, qPrintable(QString::number(count)));
    }

    void iconsOfSelectedRowsAndTitlesCanBeSeen()
    {
        applyPalette(PaletteChoice::Light);
        const QIcon sign(":/SVG Icons/PlusMinus");
        const QImage selected = sign.pixmap(QSize(24, 24), QIcon::Selected).toImage();
        QVERIFY(Contrast::visiblePart(selected, QColor(30, 144, 255)) > 0.5); // the colour of the plugin's tables
        QVERIFY(Contrast::visiblePart(sign.pixmap(24, 24).toImage(), QColor(30, 144, 255)) < 0.3);
    }

    void focusIsAnOutline()
    {
        applyPalette(PaletteChoice::Dark);
        QImage image(60, 40, QImage::Format_ARGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        QStyleOptionFocusRect option;
        option.rect = image.rect();
        option.palette = QApplication::palette();
        option.state = QStyle::State_KeyboardFocusChange;
        QApplication::style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter);
        QCOMPARE(image.pixelColor(30, 20), QColor(Qt::black)); // what is in it stays as it is
        QVERIFY(Contrast::ratio(image.pixelColor(30, 0), Qt::black) > Contrast::minimumForIcons);
        QVERIFY(Contrast::ratio(image.pixelColor(0, 20), Qt::black) > Contrast::minimumForIcons);
    }

    void everythingSaysWhatItIsFor()
    {
        const GrowingPlot plot;
        int count = 0;
        for (const char *const panel : {"module", "message", "recording", "exchange"}) {
            plot.raisedDock(panel);
        }
        plot.window->showHint();
        for (const QWidget *const widget : partsOf<QWidget>(*plot.window)) {
            // Not those of the container; parts of controls are explained by the control.
            const bool isPart = widget->objectName().startsWith("qt_") || widget->inherits("QDockWidgetTitleButton") ||
                                widget->inherits("QMdiControl") || widget->parentWidget()->inherits("QTabBar") ||
                                widget->parentWidget()->inherits("QMenuBar");
            if (isControl(widget) && !isPart && !plot.container->isAncestorOf(widget) &&
                !widget->window()->inherits("QComboBoxPrivateContainer")) {
                ++count;
                const QString what = widget->metaObject()->className() + QLatin1Char(' ') +
                                     widget->parentWidget()->metaObject()->className() + QLatin1Char(' ') +
                                     widget->accessibleName();
                QVERIFY2(isExplained(widget), qPrintable(what));
            }
        }
        QVERIFY2(count > 15, qPrintable(QString::number(count)));
        const QList<QMenu *> menus = plot.window->menuBar()->findChildren<QMenu *>() +
                                     plot.window->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
        int actionCount = 0;
        for (const QMenu *const menu : menus) {
            const QList<QAction *> actions = menu->inherits("QMenuBar") ? QList<QAction *>() : menu->actions();
            for (const QAction *const action : actions) {
                if (!action->isSeparator() && action->menu() == nullptr &&
                    !menu->parentWidget()->inherits("QMdiSubWindow")) {
                    ++actionCount;
                    QVERIFY2(!action->statusTip().isEmpty() || !action->whatsThis().isEmpty(),
                             qPrintable(action->text()));
                }
            }
        }
        QVERIFY2(actionCount > 20, qPrintable(QString::number(actionCount)));
    }

    void keysAreListedAndNoneHasTwoMeanings()
    {
        const GrowingPlot plot;
        ShortcutList list(plot.window.get());
        const auto *const table = list.findChild<QTreeWidget *>();
        QStringList keys;
        for (int row = 0; row < table->topLevelItemCount(); ++row) {
            const QTreeWidgetItem *const item = table->topLevelItem(row);
            keys.append(item->text(0));
            QVERIFY2(!item->text(2).isEmpty() && !item->text(1).contains('&'), qPrintable(item->text(1)));
            QVERIFY2(item->text(2) != item->text(1) && !item->text(2).contains('&'), qPrintable(item->text(1)));
        }
        for (const char *const expected :
             {"F1", "Ctrl+L", "Ctrl+R", "Alt+1", "Ctrl+Q", "Ctrl+1", "Ctrl+W", "Ctrl+F4"}) {
            QVERIFY2(keys.contains(expected), expected);
        }
        QCOMPARE(keys.removeDuplicates(), 0);
    }

    void panelsComeToTheFrontBeforeTheyAreHidden()
    {
        const GrowingPlot plot;
        MainWindow &window = *plot.window;
        window.resize(1200, 800);
        const auto *const recording = plot.raisedDock("recording");
        const auto *const messages = plot.raisedDock("message");
        QApplication::setActiveWindow(&window);
        QCoreApplication::processEvents();
        const auto press = [&window] {
            QTest::keyClick(&window, Qt::Key_R, Qt::ControlModifier);
            QCoreApplication::processEvents();
        };
        press(); // it is behind the messages
        QVERIFY(!recording->isHidden() && !recording->visibleRegion().isEmpty());
        QVERIFY(messages->visibleRegion().isEmpty());
        press();
        QVERIFY(recording->isHidden());
        press();
        QVERIFY(!recording->isHidden() && !recording->visibleRegion().isEmpty());
        QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
        QVERIFY(messages->isAncestorOf(QApplication::focusWidget()));
    }

    void plotMenuWorksOnTheContainerInFront()
    {
        const GrowingPlot plot;
        MainWindow &window = *plot.window;
        QApplication::setActiveWindow(&window);
        const auto box = [&](int curve) { return plot.curveBox(curve); };
        QVERIFY(!box(1)->isChecked());
        QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
        QVERIFY(box(1)->isChecked());
        const auto *const menu = window.findChild<PlotMenu *>();
        QVERIFY(partCalled<QAction>(*menu, "Curve 2")->isChecked());
        QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
        QVERIFY(!box(1)->isChecked());
        QApplication::clipboard()->clear();
        QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        const auto *const frame = plot.container->findChild<QWidget *>(PlotterWindow::plotName());
        QCOMPARE(QApplication::clipboard()->image().size(), frame->size());

        // Each entry clicks its button, whose own work is left out here.
        using PlotterWindow::Job;
        const QPair<const char *, QString> entries[] = {{"Log to File", PlotterWindow::logBoxName()},
                                                        {"Export Table", PlotterWindow::buttonName(Job::Export)},
                                                        {"Save Screenshot", PlotterWindow::buttonName(Job::Screenshot)},
                                                        {"Clear Buffer", PlotterWindow::buttonName(Job::Clear)},
                                                        {"Refresh Modules", PlotterWindow::buttonName(Job::Refresh)}};
        for (const auto &[entry, name] : entries) {
            auto *const button = plot.container->findChild<QAbstractButton *>(name);
            button->disconnect();
            const QSignalSpy clicks(button, &QAbstractButton::clicked);
            partCalled<QAction>(*menu, entry)->trigger();
            QVERIFY2(clicks.size() == 1, entry);
        }
        const auto enabled = [menu] {
            int count = 0;
            const QList<QAction *> actions = menu->actions();
            for (const QAction *const action : actions) {
                count += action->isEnabled() && !action->isSeparator() ? 1 : 0;
            }
            return count;
        };
        QCOMPARE(enabled(), 10);
        QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier); // closes the container
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(enabled(), 0);
    }

    void tiledWindowsCanBeUsed()
    {
        const GrowingPlot plot;
        for (int i = 0; i < 2; ++i) {
            plot.window->openContainer(plot.window->addContainer());
        }
        auto *const workspace = plot.window->findChild<Workspace *>();
        const QList<QMdiSubWindow *> windows = workspace->subWindowList();
        const QPair<QSize, int> columns[] = {{{1024, 600}, 1}, {{1600, 900}, 1}, {{3840, 2160}, 2}};
        for (const auto &[size, expectedColumns] : columns) {
            plot.window->resize(size);
            QCoreApplication::processEvents();
            workspace->tile();
            QCoreApplication::processEvents();
            QRegion taken;
            QSet<int> lefts;
            for (const QMdiSubWindow *const window : windows) {
                QVERIFY(!taken.intersects(window->geometry()));
                taken += window->geometry();
                lefts.insert(window->x());
                QVERIFY(window->geometry().height() > 400);
            }
            QCOMPARE(lefts.size(), expectedColumns);
            // Columns always fit the width: only rows are scrolled.
            QVERIFY(workspace->horizontalScrollBar()->maximum() == 0 || expectedColumns == 1);
        }
        windows.constFirst()->showMinimized();
        workspace->tile();
        QVERIFY(windows.constFirst()->isMinimized());
    }

    void controlsNeverCoverOneAnother()
    {
        const GrowingPlot plot("four-curves");
        // There is room for it beside the panels of a small screen.
        const QSize needed = plot.window->findChild<ContainerWindow *>()->minimumSizeHint();
        QVERIFY(needed.width() < 850 && needed.height() < 450);
        for (const QSize size :
             {QSize(640, 420), QSize(1024, 600), QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
            plot.window->resize(size);
            QCoreApplication::processEvents();
            // It is scrolled where there is no room, and takes all that there is.
            QVERIFY(plot.container->width() >= qMax(800, size.width() / 2));
            QVERIFY(plot.container->height() >= qMax(400, size.height() / 2));
            QList<QPair<QRect, QString>> placed;
            for (const QWidget *const widget : partsOf<QWidget>(*plot.container)) {
                const bool isOne = qobject_cast<const QAbstractButton *>(widget) != nullptr ||
                                   qobject_cast<const QComboBox *>(widget) != nullptr ||
                                   qobject_cast<const QTableView *>(widget) != nullptr;
                if (isOne && widget->isVisible() && !widget->inherits("QTableCornerButton")) {
                    const QRect rect(widget->mapTo(plot.container, QPoint()), widget->size());
                    QVERIFY(plot.container->rect().contains(rect));
                    for (const auto &[other, name] : qAsConst(placed)) {
                        QVERIFY2(!other.intersects(rect), qPrintable(widget->objectName() + " covers " + name));
                    }
                    placed.append({rect, widget->objectName()});
                }
            }
            QVERIFY(placed.size() > 15);
        }
    }
};

GUARDED_TEST(EyesAndKeysTest)
#include "EyesAndKeysTest.moc"
