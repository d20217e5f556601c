#include "GuardedTest.h"
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

/// A plotter with a curve in dots mode, and the user's hands.
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

    void mouse(QEvent::Type type, const QPoint &position, Qt::MouseButton button = Qt::LeftButton)
    {
        QMouseEvent event(type, position, type == QEvent::MouseMove ? Qt::NoButton : button, button, Qt::NoModifier);
        QApplication::sendEvent(&plotter, &event);
        QVERIFY(event.isAccepted());
    }

    void drag(const QPoint &from, const QPoint &to)
    {
        mouse(QEvent::MouseButtonPress, from);
        mouse(QEvent::MouseMove, to);
        mouse(QEvent::MouseButtonRelease, to);
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

/// Collects what a widget is asked to paint.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent *>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }

    QRegion region;
};

} // namespace

class PlotterInteractionTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void zoomHistory();
    void band_data();
    void band();
    void bandPainting();
    void scrolling_data();
    void scrolling();
    void controlsFollowSize();
    void focusFrame();
};

void PlotterInteractionTest::zoomHistory()
{
    Interaction it;
    PlotSettings level = adjusted(2.0, 4.0, 10.0 - 160.0 / 30.0, 8.0);
    QCOMPARE(it.buttons(), QStringLiteral("  "));
    it.drag(QPoint(150, 110), QPoint(250, 210));
    QCOMPARE(it.buttons(), QStringLiteral(" +"));
    QVERIFY(it.shows(level));

    it.drag(QPoint(300, 300), QPoint(100, 100));
    QTest::mouseClick(it.zoomOut, Qt::LeftButton);
    QCOMPARE(it.buttons(), QStringLiteral("++"));
    QTest::keyClick(&it.plotter, Qt::Key_Right); // moves this level only
    level.scroll(1, 0);
    QTest::mouseClick(it.zoomOut, Qt::LeftButton);
    QCOMPARE(it.buttons(), QStringLiteral("+-"));
    QVERIFY(it.shows(PlotSettings()));
    QTest::mouseClick(it.zoomIn, Qt::LeftButton);
    QVERIFY(it.shows(level));

    it.drag(QPoint(150, 110), QPoint(250, 210)); // discards the level that was the second
    QCOMPARE(it.buttons(), QStringLiteral("-+"));
    QTest::keyClick(&it.plotter, Qt::Key_Minus);
    QVERIFY(it.shows(level));

    it.plotter.setPlotSettings(level);
    QCOMPARE(it.buttons(), QStringLiteral("  "));
    it.lineMode->setChecked(true); // shows at the next redraw: the ends of the history do not redraw
    QTest::keyClick(&it.plotter, Qt::Key_Plus);
    QTest::keyClick(&it.plotter, Qt::Key_Minus);
    QVERIFY(it.shows(level));
}

void PlotterInteractionTest::band_data()
{
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<bool>("starts");
    QTest::addColumn<PlotSettings>("shown");
    const PlotSettings same;
    const QPoint in(150, 110);
    QTest::newRow("click") << in << in << true << same;
    QTest::newRow("thin") << in << in + QPoint(100, 2) << true << same;
    QTest::newRow("narrow") << in << in + QPoint(2, 100) << true << same;
    QTest::newRow("least") << in << in + QPoint(3, 3) << true << adjusted(2.0, 2.06, 7.9, 8.0);
    QTest::newRow("corner") << QPoint(50, 50) << in << true << adjusted(0.0, 2.0, 8.0, 10.0);
    QTest::newRow("out of the widget") << in << QPoint(700, 500) << true << adjusted(2.0, 13.0, -5.0, 8.0);
    QTest::newRow("left of the area") << QPoint(49, 100) << in << false << same;
    QTest::newRow("above the area") << QPoint(100, 45) << in << false << same;
}

void PlotterInteractionTest::band()
{
    QFETCH(QPoint, from);
    QFETCH(QPoint, to);
    QFETCH(bool, starts);
    QFETCH(PlotSettings, shown);
    Interaction it;
    it.mouse(QEvent::MouseButtonPress, from, Qt::RightButton);
    QVERIFY(!it.isDragging());
    it.mouse(QEvent::MouseButtonPress, from);
    it.mouse(QEvent::MouseMove, to);
    it.mouse(QEvent::MouseButtonRelease, to, Qt::RightButton);
    QCOMPARE(it.isDragging(), starts);
    it.mouse(QEvent::MouseButtonRelease, to);
    QVERIFY(!it.isDragging());
    QVERIFY(it.shows(shown));
}

void PlotterInteractionTest::bandPainting()
{
    Interaction it;
    it.mouse(QEvent::MouseButtonPress, QPoint(300, 200));
    it.mouse(QEvent::MouseMove, QPoint(400, 250));
    QCoreApplication::processEvents();
    PaintWatch watch;
    it.plotter.installEventFilter(&watch);
    it.mouse(QEvent::MouseMove, QPoint(200, 150)); // to the other side of where it began
    QCoreApplication::processEvents();

    const auto outline = [](const QRect &band) { return QRegion(band) - QRegion(band.adjusted(1, 1, -1, -1)); };
    const QRect band = QRect(QPoint(300, 200), QPoint(200, 150)).normalized();
    QCOMPARE(watch.region, outline(QRect(QPoint(300, 200), QPoint(400, 250))) + outline(band));
    const QImage image = it.image();
    QCOMPARE(image.pixelColor(band.topLeft()), QColor(Qt::white));
    QCOMPARE(image.pixelColor(band.bottomRight()), QColor(Qt::white));
    QVERIFY(image.pixelColor(band.bottomRight() + QPoint(1, 1)) != QColor(Qt::white));
}

void PlotterInteractionTest::scrolling_data()
{
    QTest::addColumn<int>("key"); // or 0 for the wheel
    QTest::addColumn<QPoint>("wheel");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<PlotSettings>("shown");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers control = Qt::ControlModifier;
    QTest::newRow("left") << int(Qt::Key_Left) << QPoint() << none << ranges(-2, 8, 0, 10);
    QTest::newRow("right") << int(Qt::Key_Right) << QPoint() << none << ranges(2, 12, 0, 10);
    QTest::newRow("up") << int(Qt::Key_Up) << QPoint() << none << ranges(0, 10, 2, 12);
    QTest::newRow("down, Control") << int(Qt::Key_Down) << QPoint() << control << ranges(0, 10, -2, 8);
    QTest::newRow("wheel up") << 0 << QPoint(0, 120) << none << ranges(0, 10, 2, 12);
    QTest::newRow("wheel, Control") << 0 << QPoint(0, 120) << control << ranges(2, 12, 0, 10);
    QTest::newRow("far down") << 0 << QPoint(0, -359) << none << ranges(0, 10, -4, 6);
    QTest::newRow("half a notch") << 0 << QPoint(0, -60) << none << PlotSettings();
}

void PlotterInteractionTest::scrolling()
{
    QFETCH(int, key);
    QFETCH(QPoint, wheel);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(PlotSettings, shown);
    Interaction it;
    it.plotter.curveButtons.button(1)->setChecked(true); // shows in the legend at the next redraw
    Interaction expected(shown);
    expected.plotter.curveButtons.button(1)->setChecked(true);
    expected.plotter.setPlotSettings(shown);

    QKeyEvent keyEvent(QEvent::KeyPress, key, modifiers);
    QWheelEvent wheelEvent(QPointF(300, 200), it.plotter.mapToGlobal(QPoint(300, 200)), QPoint(), wheel, Qt::NoButton,
                           modifiers, Qt::NoScrollPhase, false);
    QEvent *const event = key == 0 ? static_cast<QEvent *>(&wheelEvent) : &keyEvent;
    static_cast<QObject &>(it.plotter).event(event); // the application would tell less of a wheel's acceptance
    QCOMPARE(event->isAccepted(), key != 0);         // the wheel also moves what is around the plot
    QCOMPARE(it.image(), expected.image());
    QCOMPARE(it.buttons(), QStringLiteral("  ")); // no level is pushed
}

void PlotterInteractionTest::controlsFollowSize()
{
    Interaction it;
    it.plotter.resize(700, 500);
    int left = 10;
    QList<QAbstractButton *> controls = it.plotter.curveButtons.buttons();
    controls.append(it.plotter.showAllDataCheck);
    for (const QAbstractButton *control : qAsConst(controls)) {
        QCOMPARE(control->geometry(), QRect(QPoint(left, 7), control->sizeHint()));
        left += control->width() + 5;
    }
    int right = 700;
    controls = {it.aspect, it.lineMode, it.zoomOut, it.zoomIn};
    for (const QAbstractButton *control : qAsConst(controls)) {
        QCOMPARE(control->geometry().topRight(), QPoint(right - 6, 7));
        right = control->x();
    }
}

void PlotterInteractionTest::focusFrame()
{
    Interaction it;
    QVERIFY(QTest::qWaitForWindowActive(&it.plotter));
    it.plotter.setAttribute(Qt::WA_KeyboardFocusChange); // styles show the frame after a key press
    it.aspect->setFocus();
    const QImage before = it.image();
    it.plotter.setFocus();
    QVERIFY(it.image() != before);
}

GUARDED_TEST_MAIN(PlotterInteractionTest)
#include "PlotterInteractionTest.moc"
