#include "GuardedTest.h"
#include "PlotterFixture.h"

#include <QPainter>

namespace
{

constexpr int controlsHeight = 38; // widget pixels

struct Look
{
    QColor background;
    QColor dark; // without the lightening
    QColor light;
};

/// Shows a range in which no tick is a whole number, so that there is no text but the axes' titles.
void setUp(MovedPlotter *plotter, const QSize &size, const Look &look, unsigned int intervals, bool square)
{
    QPalette palette;
    palette.setColor(QPalette::Shadow, look.background);
    palette.setColor(QPalette::Dark, look.dark);
    palette.setColor(QPalette::Light, look.light);
    plotter->setPalette(palette);
    plotter->resize(size);
    plotter->curveButtons.button(0)->setChecked(false);
    plotter->findChildren<QCheckBox *>().value(1)->setChecked(square);
    plotter->show();
    plotter->setPlotSettings(ranges(0.05, 0.95, 0.05, 0.95, intervals));
}

/// The same plot, drawn with QPainter's lines.
QImage painted(const MovedPlotter &plotter, const Look &look, int intervals, bool square)
{
    const int width = plotter.width();
    const int height = plotter.height();
    const double plotHeight = height - 101;
    const double plotWidth = square ? plotHeight : width - 101;
    const int bottom = height - 41;
    QImage image(plotter.size(), QImage::Format_RGB32);
    image.fill(look.background);
    QPainter painter(&image);
    painter.setFont(plotter.font());
    const QPen quiteDark(look.dark.lighter(150));
    const QPen light(look.light);
    for (int index = 0; intervals > 0 && index <= intervals; ++index) {
        const int y = static_cast<int>(bottom - plotHeight * index / intervals);
        painter.setPen(quiteDark);
        painter.drawLine(50, y, static_cast<int>(50.0 + plotWidth), y);
        painter.setPen(light);
        painter.drawLine(45, y, 50, y);
    }
    for (int index = 0; intervals > 0 && index <= intervals; ++index) {
        const int x = static_cast<int>(50.0 + plotWidth * index / intervals);
        painter.setPen(quiteDark);
        painter.drawLine(x, 60, x, bottom);
        painter.setPen(light);
        painter.drawLine(x, bottom, x, bottom + 5);
    }
    painter.setPen(light);
    painter.drawRect(QRectF(50.0, 60.0, plotWidth, plotHeight));
    const QFontMetrics metrics = painter.fontMetrics();
    painter.drawText(QPointF(2.0, 50.0), QStringLiteral("Y:"));
    painter.drawText(width - 4 - metrics.horizontalAdvance(":X"), static_cast<int>(bottom + 2.5 + 2 * metrics.height()),
                     QStringLiteral(":X"));
    return image;
}

QImage belowControls(const QImage &image)
{
    return image.copy(0, controlsHeight, image.width(), image.height() - controlsHeight)
        .convertToFormat(QImage::Format_RGB32);
}

/// "start+length" of every run of pixels in a row (or column) of pixels that differ from the background.
QStringList runs(const QImage &image, const QPoint &start, const QPoint &step, QRgb background)
{
    QStringList found;
    int length = 0;
    for (QPoint at = start; image.rect().contains(at); at += step) {
        const bool isInked = image.pixel(at) != background;
        const bool isLast = !image.rect().contains(at + step);
        length += isInked ? 1 : 0;
        if (length > 0 && (!isInked || isLast)) {
            const QPoint end = isInked ? at + step : at;
            found.append(QStringLiteral("%1+%2").arg(end.x() * step.x() + end.y() * step.y() - length).arg(length));
            length = 0;
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
        const Look looks[] = {{QColor(10, 20, 30), QColor(60, 60, 60), Qt::white},
                              {QColor(10, 20, 30), QColor(90, 60, 30, 100), QColor(250, 200, 100, 150)}};
        for (const Look &look : looks) {
            if (look.light.alpha() < 255 && size.height() < 110) {
                continue; // the painter blends a frame that is hardly higher than its line twice in places
            }
            MovedPlotter plotter(4);
            setUp(&plotter, size, look, static_cast<unsigned int>(intervals), square);
            QCOMPARE(belowControls(plotter.grab().toImage()), belowControls(painted(plotter, look, intervals, square)));
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
        const Look look = {QColor(10, 20, 30), QColor(60, 60, 60), Qt::white};
        MovedPlotter plotter(4);
        plotter.ratio = ratio;
        setUp(&plotter, QSize(600, 400), look, 7, false);
        const QImage image = plotter.grab().toImage();
        QCOMPARE(image.size(), QSize(600, 400) * ratio);
        QStringList rows;
        QStringList columns;
        for (int index = 0; index <= 7; ++index) {
            const int y = static_cast<int>(359.0 - 299.0 * (7 - index) / 7);
            const int x = static_cast<int>(50.0 + 499.0 * index / 7);
            rows.append(QStringLiteral("%1+%2").arg(qRound(y * ratio)).arg(width));
            columns.append(QStringLiteral("%1+%2").arg(qRound(x * ratio)).arg(width));
        }
        const auto device = [ratio](int position) { return qRound(position * ratio); };
        const QRgb background = look.background.rgb();
        QCOMPARE(runs(image, {device(90), device(56)}, {0, 1}, background), rows);
        QCOMPARE(runs(image, {device(47), device(56)}, {0, 1}, background), rows); // the ticks
        QCOMPARE(runs(image, {device(40), device(90)}, {1, 0}, background), columns);
        QCOMPARE(runs(image, {device(40), device(362)}, {1, 0}, background), columns);
        for (const QPoint corner : {QPoint(50, 60), QPoint(549, 60), QPoint(50, 359), QPoint(549, 359)}) {
            for (int pixel = 0; pixel < width * width; ++pixel) {
                const QPoint at(device(corner.x()) + pixel % width, device(corner.y()) + pixel / width);
                QCOMPARE(image.pixelColor(at), QColor(Qt::white));
            }
        }
    }
};

GUARDED_TEST_MAIN(GridLinesTest)
#include "GridLinesTest.moc"
