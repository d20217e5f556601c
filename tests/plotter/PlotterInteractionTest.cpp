#include "PlotterFixture.h"

#include <QToolButton>
#include <QWheelEvent>

Q_DECLARE_METATYPE(PlotSettings)

namespace
{

PlotSettings adjusted(double minX, double maxX, double minY, double maxY)
{
    PlotSettings settings = ranges(minX, maxX, minY, maxY);
    settings.adjust();
    return settings;
}

/// A plotter with a curve in dots mode.
struct Interaction : PlotterFixture
{
    explicit Interaction(const PlotSettings &settings = PlotSettings())
    {
        plotter.setCurveData(0, {QPointF(1, 1), QPointF(4, 7), QPointF(3, 5), QPointF(8, 2)});
        lineMode->setChecked(false);
        plotter.setPlotSettings(settings);
    }

    bool shows(const PlotSettings &settings)
    {
        return image() == Interaction(settings).image();
    }

    /// "+-": zoom-in button shown and enabled, zoom-out button shown and disabled; a blank for a hidden one.
    QString buttons() const
    {
        QString text;
        for (const QToolButton *button : {zoomIn, zoomOut}) {
            text += QLatin1Char(button->isHidden() ? ' ' : button->isEnabled() ? '+' : '-');
        }
        return text;
    }

    bool isDragging() const
    {
        return plotter.cursor().shape() == Qt::CrossCursor;
    }

    QToolButton *zoomIn = plotter.findChildren<QToolButton *>().value(0);
    QToolButton *zoomOut = plotter.findChildren<QToolButton *>().value(1);
};

} // namespace

/// Zooming and scrolling by mouse, wheel and keys.
class PlotterInteractionTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void zoomHistory()
    {
        Interaction it;
        PlotSettings level = adjusted(2.0, 4.0, 10.0 - 160.0 / 30.0, 8.0);
        QCOMPARE(it.buttons(), QStringLiteral("  "));
        drag(&it.plotter, QPoint(150, 110), QPoint(250, 210));
        QCOMPARE(it.buttons(), QStringLiteral(" +"));
        QVERIFY(it.shows(level));

        drag(&it.plotter, QPoint(300, 300), QPoint(100, 100));
        QTest::mouseClick(it.zoomOut, Qt::LeftButton);
        QCOMPARE(it.buttons(), QStringLiteral("++"));
        QTest::keyClick(&it.plotter, Qt::Key_Right); // moves this level only
        level.scroll(1, 0);
        QTest::mouseClick(it.zoomOut, Qt::LeftButton);
        QCOMPARE(it.buttons(), QStringLiteral("+-"));
        QVERIFY(it.shows(PlotSettings()));
        QTest::mouseClick(it.zoomIn, Qt::LeftButton);
        QVERIFY(it.shows(level));

        drag(&it.plotter, QPoint(150, 110), QPoint(250, 210)); // discards the level that was the second
        QCOMPARE(it.buttons(), QStringLiteral("-+"));
        QTest::keyClick(&it.plotter, Qt::Key_Minus);
        QVERIFY(it.shows(level));
        it.plotter.setPlotSettings(level);
        QCOMPARE(it.buttons(), QStringLiteral("  "));
        QVERIFY(it.shows(level));
        it.lineMode->setChecked(true); // shows at the next redraw: the ends of the history do not redraw
        QTest::keyClick(&it.plotter, Qt::Key_Plus);
        QTest::keyClick(&it.plotter, Qt::Key_Minus);
        QVERIFY(it.shows(level));
    }

    void band_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<bool>("starts");
        QTest::addColumn<PlotSettings>("shown");
        const PlotSettings same;
        const QPoint in(150, 110);
        QTest::newRow("thin") << in << in + QPoint(100, 2) << true << same;
        QTest::newRow("minimum") << in << in + QPoint(3, 3) << true << adjusted(2.0, 2.06, 7.9, 8.0);
        QTest::newRow("corner") << QPoint(50, 50) << in << true << adjusted(0.0, 2.0, 8.0, 10.0);
        QTest::newRow("out of the widget") << in << QPoint(700, 500) << true << adjusted(2.0, 13.0, -5.0, 8.0);
        QTest::newRow("left of the area") << QPoint(49, 100) << in << false << same;
        QTest::newRow("above the area") << QPoint(100, 45) << in << false << same;
    }

    void band()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(bool, starts);
        QFETCH(PlotSettings, shown);
        Interaction it;
        mouse(&it.plotter, QEvent::MouseButtonPress, from, Qt::RightButton);
        QVERIFY(!it.isDragging());
        mouse(&it.plotter, QEvent::MouseButtonPress, from);
        mouse(&it.plotter, QEvent::MouseMove, to);
        mouse(&it.plotter, QEvent::MouseButtonRelease, to, Qt::RightButton);
        QCOMPARE(it.isDragging(), starts);
        mouse(&it.plotter, QEvent::MouseButtonRelease, to);
        QVERIFY(!it.isDragging());
        QVERIFY(it.shows(shown));
    }

    void scrolling_data()
    {
        QTest::addColumn<int>("key"); // or 0 for the wheel
        QTest::addColumn<int>("wheel");
        QTest::addColumn<bool>("control");
        QTest::addColumn<PlotSettings>("shown");
        QTest::newRow("left") << int(Qt::Key_Left) << 0 << false << ranges(-2, 8, 0, 10);
        QTest::newRow("up") << int(Qt::Key_Up) << 0 << false << ranges(0, 10, 2, 12);
        QTest::newRow("down, Control") << int(Qt::Key_Down) << 0 << true << ranges(0, 10, -2, 8);
        QTest::newRow("wheel, Control") << 0 << 120 << true << ranges(2, 12, 0, 10);
        QTest::newRow("far down") << 0 << -359 << false << ranges(0, 10, -4, 6);
        QTest::newRow("half a notch") << 0 << -60 << false << PlotSettings();
    }

    void scrolling()
    {
        QFETCH(int, key);
        QFETCH(int, wheel);
        QFETCH(bool, control);
        QFETCH(PlotSettings, shown);
        Interaction it;
        it.plotter.curveButtons.button(1)->setChecked(true); // shows in the legend at the next redraw
        Interaction expected(shown);
        expected.plotter.curveButtons.button(1)->setChecked(true);
        expected.plotter.setPlotSettings(shown);

        const Qt::KeyboardModifiers modifiers = control ? Qt::ControlModifier : Qt::NoModifier;
        QKeyEvent keyEvent(QEvent::KeyPress, key, modifiers);
        QWheelEvent wheelEvent(QPointF(300, 200), it.plotter.mapToGlobal(QPoint(300, 200)), QPoint(), QPoint(0, wheel),
                               Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QEvent *const event = key == 0 ? static_cast<QEvent *>(&wheelEvent) : &keyEvent;
        static_cast<QObject &>(it.plotter).event(event); // QApplication would change whether a wheel event is accepted
        QCOMPARE(event->isAccepted(), key != 0);         // the wheel also moves what is around the plot
        QCOMPARE(it.image(), expected.image());
        QCOMPARE(it.buttons(), QStringLiteral("  ")); // no level is pushed
    }

    /// Escape is passed on. Tab and Shift+Tab stop at every curve box, Space toggles only that one.
    void keysOfBoxesAndWindow()
    {
        Interaction it;
        QApplication::setActiveWindow(&it.plotter);
        it.plotter.setFocus();
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        static_cast<QObject &>(it.plotter).event(&escape);
        QVERIFY(!escape.isAccepted()); // it closes the dialog around
        const QList<QAbstractButton *> boxes = it.plotter.curveButtons.buttons();
        QTest::mouseClick(boxes.at(2), Qt::LeftButton);
        QVERIFY(boxes.at(2)->isChecked());
        const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
        const auto isReached = [&](QAbstractButton *box, Qt::Key key) {
            for (int step = 0; step < 20 && QApplication::focusWidget() != box; ++step) {
                press(key);
            }
            return QApplication::focusWidget() == box;
        };
        QVector<bool> checked;
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
            it.plotter.setFocus();
            for (QAbstractButton *const box : boxes) {
                QVERIFY(isReached(box, key));
                press(Qt::Key_Space);
                checked.append(box->isChecked());
            }
        }
        QCOMPARE(checked, QVector<bool>({false, true, false, true, true, false, true, false}));
    }

    /// From the left: the boxes of the curves, "Show all data"; at the right edge: zoom buttons, "line", "square".
    void controls()
    {
        Interaction it;
        const QList<QCheckBox *> checks = it.plotter.findChildren<QCheckBox *>();
        QList<QWidget *> left = {it.plotter.showAllDataCheck};
        for (int id = 3; id >= 0; --id) {
            left.prepend(it.plotter.curveButtons.button(id));
        }
        const QList<QWidget *> right = {it.zoomIn, it.zoomOut, checks.at(0), checks.at(1)};
        const auto compare = [](const QList<QWidget *> &row, int x) {
            for (const QWidget *const control : row) {
                QCOMPARE(control->geometry(), QRect(QPoint(x, 7), control->sizeHint()));
                x += control->width() + 5;
            }
        };
        for (const int width : {700, 500}) {
            it.plotter.resize(width, 400);
            compare(left, 10);
            int x = width - 20;
            for (const QWidget *const control : right) {
                x -= control->sizeHint().width();
            }
            compare(right, x);
        }
    }
};

GUARDED_TEST(PlotterInteractionTest)
#include "PlotterInteractionTest.moc"
