#include "PlotterFixture.h"

#include "host/DynamicProperty.h"

#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>

#include <functional>
#include <memory>
#include <utility>

namespace
{

/// The box of an additional curve. Counts rebuilds of the image: each one reads the box's name once for the legend.
class ListedButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QString dpNameY READ name CONSTANT)

public:
    using QPushButton::QPushButton;

    QString name() const
    {
        ++*rebuilds;
        return {};
    }

    std::shared_ptr<int> rebuilds = std::make_shared<int>(0);
};

/// A plot in a window of its own that counts rebuilds of its image; up to date at the start.
struct CountedPlot
{
    CountedPlot()
    {
        auto *const button = new ListedButton(&plotter);
        button->setCheckable(true);
        button->setChecked(true);
        plotter.curveButtons.addButton(button, 4);
        m_rebuilds = button->rebuilds;
        plotter.setPalette(lookOf(Qt::black, Qt::gray, Qt::white));
        plotter.resize(600, 400);
        plotter.show();
        plotter.activateWindow();
        REQUIRE(QTest::qWaitForWindowActive(&plotter));
        rebuilds();
    }

    /// Processes pending events and returns the number of rebuilds since the last call.
    int rebuilds()
    {
        QCoreApplication::processEvents();
        return std::exchange(*m_rebuilds, 0);
    }

    /// The content of the window on the screen, in device pixels; unlike grab() this repaints nothing.
    QImage screen()
    {
        QCoreApplication::processEvents();
        return plotter.screen()->grabWindow(plotter.winId()).toImage();
    }

    MovedPlotter plotter{4};

private:
    std::shared_ptr<int> m_rebuilds;
};

} // namespace

using Change = std::function<void(MovedPlotter *)>;
Q_DECLARE_METATYPE(Change)

/// When the image is rebuilt, and what is shown on the screen.
class PlotterRepaintTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void changeIsPainted_data()
    {
        QTest::addColumn<Change>("change");
        const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
        row("points", [](MovedPlotter *plotter) { plotter->setCurveData(0, {QPointF(1, 2), QPointF(8, 7)}); });
        row("clear", [](MovedPlotter *plotter) { plotter->clearCurve(0); });
        row("range", [](MovedPlotter *plotter) { plotter->setPlotSettings(ranges(0, 20, 0, 20)); });
        row("band", [](MovedPlotter *plotter) { drag(plotter, QPoint(150, 110), QPoint(250, 210)); });
        row("scroll", [](MovedPlotter *plotter) { QTest::keyClick(plotter, Qt::Key_Left); });
        row("size", [](MovedPlotter *plotter) { plotter->resize(500, 300); });
        row("palette", [](MovedPlotter *plotter) { plotter->setPalette(Qt::darkGreen); });
        row("font", [](MovedPlotter *plotter) { plotter->setFont(QFont(QStringLiteral("DejaVu Sans"), 8)); });
        row("style", [](MovedPlotter *plotter) {
            QStyle *const style = QStyleFactory::create(QStringLiteral("Windows"));
            style->setParent(plotter);
            plotter->setStyle(style);
        });
        row("colour group", [](MovedPlotter *plotter) { plotter->setEnabled(false); });
        row("pixel ratio", [](MovedPlotter *plotter) {
            plotter->ratio = 2.0;
            plotter->update(); // as when the window comes to another screen
        });
        row("many at once", [](MovedPlotter *plotter) {
            for (int id = 0; id < 4; ++id) {
                plotter->setCurveData(id, {QPointF(1, 2), QPointF(8, 7)});
            }
            plotter->setPlotSettings(ranges(0, 20, 0, 20));
            plotter->resize(500, 300);
        });
    }

    void changeIsPainted()
    {
        QFETCH(Change, change);
        CountedPlot plot;
        change(&plot.plotter);
        QCOMPARE(plot.rebuilds(), 1);
    }

    void translucentGround()
    {
        CountedPlot plot;
        QPalette palette = plot.plotter.palette();
        palette.setColor(QPalette::Shadow, Qt::transparent);
        palette.setColor(QPalette::Mid, Qt::darkGreen);
        plot.plotter.setPalette(palette);
        QCOMPARE(plot.screen().pixelColor(300, 200), QColor(Qt::darkGreen));
    }

    void activationIsPaintedIfColorsDiffer()
    {
        CountedPlot plot;
        QApplication::setActiveWindow(nullptr);
        QCOMPARE(plot.rebuilds(), 0);
        QPalette palette = plot.plotter.palette();
        palette.setColor(QPalette::Inactive, QPalette::Dark, Qt::darkGreen);
        plot.plotter.setPalette(palette);
        QCOMPARE(plot.rebuilds(), 1);
        QApplication::setActiveWindow(&plot.plotter);
        QCOMPARE(plot.rebuilds(), 1);
    }

    void pictureBeforeTheRepaint()
    {
        CountedPlot plot;
        const QImage empty = plot.plotter.grab().toImage();
        plot.plotter.setCurveData(0, {QPointF(1, 2), QPointF(8, 7)});
        const QImage grabbed = plot.plotter.grab().toImage();
        QImage rendered(grabbed.size(), grabbed.format());
        plot.plotter.render(&rendered);
        QVERIFY(grabbed != empty);
        QCOMPARE(rendered, grabbed);
        QCOMPARE(plot.rebuilds(), 1);
        QCOMPARE(plot.screen().convertToFormat(grabbed.format()), grabbed);
    }

    void paintingWithoutAChange()
    {
        CountedPlot plot;
        plot.plotter.repaint();
        plot.plotter.grab();
        plot.plotter.update(10, 10, 5, 5);
        mouse(&plot.plotter, QEvent::MouseButtonPress, QPoint(150, 110));
        mouse(&plot.plotter, QEvent::MouseMove, QPoint(250, 210));
        QCOMPARE(plot.rebuilds(), 0);
        mouse(&plot.plotter, QEvent::MouseMove, QPoint(152, 112));
        mouse(&plot.plotter, QEvent::MouseButtonRelease, QPoint(152, 112));
        plot.plotter.hide();
        plot.plotter.show();
        QCOMPARE(plot.rebuilds(), 0);
    }

    /// The whole outline: the strips that are repainted have to cover what is drawn.
    void rubberBandOnTheScreen()
    {
        CountedPlot plot;
        const QImage before = plot.screen();
        mouse(&plot.plotter, QEvent::MouseButtonPress, QPoint(260, 215));
        mouse(&plot.plotter, QEvent::MouseMove, QPoint(400, 300));
        plot.screen();
        mouse(&plot.plotter, QEvent::MouseMove, QPoint(155, 115)); // to the upper left of the press
        const QRect band(QPoint(155, 115), QPoint(260, 215));
        const QImage shown = plot.screen();
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                const bool isOutline = band.contains(x, y) && !band.adjusted(1, 1, -1, -1).contains(x, y);
                QCOMPARE(shown.pixel(x, y), isOutline ? QColor(Qt::white).rgb() : before.pixel(x, y));
            }
        }
        mouse(&plot.plotter, QEvent::MouseMove, QPoint(261, 216)); // too small to zoom
        mouse(&plot.plotter, QEvent::MouseButtonRelease, QPoint(261, 216));
        QCOMPARE(plot.screen(), before);
    }

    void focusFrameOnTheScreen()
    {
        CountedPlot plot;
        plot.plotter.setFocus();
        QTest::keyClick(&plot.plotter, Qt::Key_Tab);
        const QImage without = plot.screen();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QVERIFY(plot.plotter.hasFocus());
        const QImage with = plot.screen();
        QVERIFY(with.pixel(300, 0) != without.pixel(300, 0));
        QVERIFY(with.pixel(599, 200) != without.pixel(599, 200));
        QCOMPARE(plot.rebuilds(), 0);
    }
};

GUARDED_TEST(PlotterRepaintTest)
#include "PlotterRepaintTest.moc"
