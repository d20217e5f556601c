#include "application/SelfTest.h"

#include "PlotterWindow.h"
#include "application/PluginFolders.h"
#include "application/Terminal.h"
#include "window/MainWindow.h"
#include "window/WorkbenchStyle.h"

#include "host/ContainerInterface.h"
#include "host/CurveColors.h"
#include "host/LineEnd.h"

#include <QCoreApplication>
#include <QFile>
#include <QIcon>
#include <QPixmap>

namespace
{

constexpr double runSeconds = 3.0;
constexpr int minimumLines = 20;        // of a run of that length; the usual rate gives 210
constexpr int minimumCurvePixels = 100; // of one colour; a mark at a curve's end has 60
constexpr int hueTolerance = 12;        // degrees
constexpr int minimumSaturation = 100;  // of 255
constexpr int drawingSidePixels = 16;

struct SelfTestText
{
    Q_DECLARE_TR_FUNCTIONS(SelfTest)
};

/// Counts in the middle of the plot, where neither tables nor coloured captions are.
int pixelsOfColor(const QImage &image, const QColor &color)
{
    int count = 0;
    for (int y = image.height() / 5; y < image.height() * 4 / 5; ++y) {
        for (int x = image.width() * 3 / 5; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const int distance = qAbs(pixel.hsvHue() - color.hsvHue());
            if (pixel.hsvSaturation() > minimumSaturation && qMin(distance, 360 - distance) < hueTolerance) {
                ++count;
            }
        }
    }
    return count;
}

bool hasSeveralColors(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0)) {
                return true;
            }
        }
    }
    return false;
}

/// What is wrong with the lines of a log of so many curves; empty when nothing is.
QString problemOfLines(const QList<QByteArray> &lines, int curves)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (!PlotterWindow::isLogLine(lines.at(i), i, curves)) {
            return SelfTestText::tr("line %1 is \"%2\"").arg(i + 1).arg(QString::fromUtf8(lines.at(i)).simplified());
        }
    }
    return {};
}

} // namespace

SelfTest::SelfTest(const Terminal &terminal) : m_terminal(terminal) {}

Options SelfTest::completed(Options options) const
{
    if (options.scene.isEmpty()) {
        options.scene = QStringLiteral("four-curves");
    }
    options.seconds = options.seconds.value_or(runSeconds);
    if (options.picture.isEmpty()) {
        options.picture = m_folder.filePath(QStringLiteral("self-test.png"));
    }
    if (options.log.isEmpty()) {
        options.log = m_folder.filePath(QStringLiteral("self-test.csv"));
    }
    options.plugins = PluginFolders::withPlotter(options.plugins);
    return options;
}

bool SelfTest::check(bool isPassed, const QString &what)
{
    // Not translated: scripts look for them.
    const QString mark = isPassed ? QStringLiteral("ok    ") : QStringLiteral("FAIL  ");
    m_terminal.print(mark + what);
    m_hasFailed = m_hasFailed || !isPassed;
    return isPassed;
}

bool SelfTest::hasFailed() const
{
    return m_hasFailed;
}

void SelfTest::checkDrawings()
{
    workbenchStyleSheet(); // makes the drawing known
    const QImage arrow = QIcon(QStringLiteral(":/style/arrow-down.svg"))
                             .pixmap(drawingSidePixels, drawingSidePixels)
                             .toImage()
                             .convertToFormat(QImage::Format_ARGB32);
    check(!arrow.isNull() && hasSeveralColors(arrow),
          SelfTestText::tr("drawings: the SVG image plugin of Qt draws the arrow of the boxes"));
}

void SelfTest::noteEmptyPlot(ContainerInterface *container)
{
    m_emptyPlot = container->grab().toImage();
}

void SelfTest::checkPicture(const QString &path, int curves)
{
    const QImage picture(path);
    if (!check(!picture.isNull() && picture.size() == m_emptyPlot.size(),
               SelfTestText::tr("picture: %1x%2 pixels").arg(picture.width()).arg(picture.height()))) {
        return;
    }
    for (int curve = 0; curve < curves; ++curve) {
        const QColor &color = colorForIds[curve % curveColorCount];
        const int pixels = pixelsOfColor(picture, color) - pixelsOfColor(m_emptyPlot, color);
        check(pixels >= minimumCurvePixels,
              SelfTestText::tr("curve %1: drawn with %2 pixels").arg(curve + 1).arg(pixels));
    }
}

void SelfTest::checkLog(const QString &path, int curves, int lines)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        check(false, SelfTestText::tr("log: %1: %2").arg(path, file.errorString()));
        return;
    }
    QList<QByteArray> found = file.readAll().split(QByteArray(hostLineEnd).back());
    const QByteArray rest = found.takeLast();
    const QString problem = problemOfLines(found, curves);
    const int dataLines = found.size() - PlotterWindow::logHeaderLines;
    check(dataLines >= minimumLines && dataLines == lines,
          SelfTestText::tr("log: %1 lines below the header, %2 were recorded").arg(dataLines).arg(lines));
    check(problem.isEmpty() && rest.isEmpty(), problem.isEmpty()
                                                   ? SelfTestText::tr("log: every line is whole and in its place")
                                                   : SelfTestText::tr("log: %1").arg(problem));
}

void SelfTest::checkContainer(MainWindow &window, ContainerInterface *container)
{
    window.openContainer(container);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    check(container->isVisible() && hasSeveralColors(container->grab().toImage()),
          SelfTestText::tr("container: \"%1\" opens and shows something").arg(container->windowTitle()));
}
