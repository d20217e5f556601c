#include "PlotterFixture.h"

#include <QPainter>

namespace
{

/// Shows a range in which no tick is a whole number, so that there is no text but the axes' titles.
void setUp(MovedPlotter *plotter, const QSize &size, const QPalette &look, unsigned int intervals, bool square)
{
    plotter->setPalette(look);
    plotter->resize(size);
    plotter->curveButtons.button(0)->setChecked(false);
    plotter->findChildren<QCheckBox *>().value(1)->setChecked(square);
    plotter->show();
    plotter->setPlotSettings(ranges(0.05, 0.95, 0.05, 0.95, intervals));
}

/// The same plot, drawn with QPainter's lines.
QImage painted(const MovedPlotter &plotter, int intervals, bool square)
{
    const int width = plotter.width();
    const int height = plotter.height();
    const double plotHeight = height - 101;
    const double plotWidth = square ? plotHeight : width - 101;
    const int bottom = height - 41;
    const QPalette &look = plotter.palette();
    const QColor light = look.color(QPalette::Light);
    QImage image(plotter.size(), QImage::Format_RGB32);
    image.fill(look.color(QPalette::Shadow));
    QPainter painter(&image);
    painter.setFont(plotter.font());
    const auto draw = [&](const QLine &line, const QLine &tick) {
        painter.setPen(look.color(QPalette::Dark).lighter(150));
        painter.drawLine(line);
        painter.setPen(light);
        painter.drawLine(tick);
    };
    for (int index = 0; intervals > 0 && index <= intervals; ++index) {
        const int y = static_cast<int>(bottom - plotHeight * index / intervals);
        draw({50, y, static_cast<int>(50.0 + plotWidth), y}, {45, y, 50, y});
    }
    for (int index = 0; intervals > 0 && index <= intervals; ++index) {
        const int x = static_cast<int>(50.0 + plotWidth * index / intervals);
        draw({x, 60, x, bottom}, {x, bottom, x, bottom + 5});
    }
    painter.setPen(light);
    painter.drawRect(QRectF(50.0, 60.0, plotWidth, plotHeight));
    const QFontMetrics metrics = painter.fontMetrics();
    painter.drawText(QPointF(2.0, 50.0), QStringLiteral("Y:"));
    painter.drawText(width - 4 - metrics.horizontalAdvance(":X"), static_cast<int>(bottom + 2.5 + 2 * metrics.height()),
                     QStringLiteral(":X"));
    return image;
}

/// The positions of the pixels in a row (or column) of pixels that differ from the first one.
QVector<int> inked(const QImage &image, const QPoint &start, const QPoint &step)
{
    QVector<int> found;
    for (QPoint at = start; image.rect().contains(at); at += step) {
        if (image.pixel(at) != image.pixel(start)) {
            found.append(QPoint::dotProduct(at, step));
        }
    }
    return found;
}

} // namespace

/// The pixels of grid, ticks and frame.
class GridLinesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void likeThePainter_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("intervals");
        QTest::addColumn<bool>("square");
        QTest::newRow("usual") << QSize(600, 400) << 5 << false;
        QTest::newRow("odd") << QSize(533, 357) << 7 << false;
        QTest::newRow("square") << QSize(600, 400) << 10 << true;
        QTest::newRow("a line per pixel") << QSize(300, 300) << 199 << false;
        QTest::newRow("no lines") << QSize(600, 400) << 0 << false;
        QTest::newRow("smallest") << QSize(101, 101) << 3 << false;
        QTest::newRow("low") << QSize(300, 102) << 3 << false;
    }

    void likeThePainter()
    {
        QFETCH(QSize, size);
        QFETCH(int, intervals);
        QFETCH(bool, square);
        const QPalette looks[] = {lookOf(QColor(10, 20, 30), QColor(60, 60, 60), Qt::white),
                                  lookOf(QColor(10, 20, 30), QColor(90, 60, 30, 100), QColor(250, 200, 100, 150))};
        for (const QPalette &look : looks) {
            if (look.color(QPalette::Light).alpha() < 255 && size.height() < 110) {
                continue; // the painter blends a frame that is hardly higher than its line twice in places
            }
            MovedPlotter plotter(4);
            setUp(&plotter, size, look, static_cast<unsigned int>(intervals), square);
            QCOMPARE(withoutControls(plotter.grab().toImage().convertToFormat(QImage::Format_RGB32)),
                     withoutControls(painted(plotter, intervals, square)));
        }
    }

    /// All lines are equally wide at any position, and meet in the corners.
    void fractionalRatio_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::addColumn<int>("width");
        QTest::newRow("1.25") << 1.25 << 1;
        QTest::newRow("1.5") << 1.5 << 2;
        QTest::newRow("2") << 2.0 << 2;
    }

    void fractionalRatio()
    {
        QFETCH(double, ratio);
        QFETCH(int, width);
        MovedPlotter plotter(4);
        plotter.ratio = ratio;
        setUp(&plotter, QSize(600, 400), lookOf(QColor(10, 20, 30), QColor(60, 60, 60), Qt::white), 7, false);
        const QImage image = plotter.grab().toImage();
        QCOMPARE(image.size(), QSize(600, 400) * ratio);
        const auto device = [ratio](int position) { return qRound(position * ratio); };
        QVector<int> rows;
        QVector<int> columns;
        for (int index = 0; index <= 7; ++index) {
            for (int pixel = 0; pixel < width; ++pixel) {
                rows.append(device(static_cast<int>(359.0 - 299.0 * (7 - index) / 7)) + pixel);
                columns.append(device(static_cast<int>(50.0 + 499.0 * index / 7)) + pixel);
            }
        }
        QCOMPARE(inked(image, {device(90), device(56)}, {0, 1}), rows);
        QCOMPARE(inked(image, {device(47), device(56)}, {0, 1}), rows); // the ticks
        QCOMPARE(inked(image, {device(40), device(90)}, {1, 0}), columns);
        QCOMPARE(inked(image, {device(40), device(362)}, {1, 0}), columns);
        for (const QPoint corner : {QPoint(50, 60), QPoint(549, 60), QPoint(50, 359), QPoint(549, 359)}) {
            for (int pixel = 0; pixel < width * width; ++pixel) {
                const QPoint at(device(corner.x()) + pixel % width, device(corner.y()) + pixel / width);
                QCOMPARE(image.pixelColor(at), QColor(Qt::white));
            }
        }
    }
};

GUARDED_TEST(GridLinesTest)
#include "GridLinesTest.moc"
