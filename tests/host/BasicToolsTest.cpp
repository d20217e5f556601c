#include "host/BasicTools.h"
#include "GuardedTest.h"

#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPushButton>

#include <cmath>
#include <limits>
#include <random>

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

struct Axis
{
    double min;
    double max;
    unsigned int ticks;
};

Axis adjusted(Axis axis)
{
    BasicTools::adjustLinearAxis(axis.min, axis.max, axis.ticks);
    return axis;
}

/// With the digits that identify a double exactly: a tick with a rounding error would get no label.
QString textOf(const Axis &axis)
{
    constexpr int exact = QLocale::FloatingPointShortest;
    return QStringLiteral("%1..%2/%3").arg(axis.min, 0, 'g', exact).arg(axis.max, 0, 'g', exact).arg(axis.ticks);
}

/// The requirement that an adjusted axis violates; empty for a correct one.
QString faultOf(const Axis &axis)
{
    if (!std::isfinite(axis.min) || !(axis.min < axis.max) || axis.ticks < 1 || !std::isfinite(axis.max - axis.min)) {
        return QStringLiteral("no axis");
    }
    const double step = (axis.max - axis.min) / axis.ticks;
    const double mantissa = step / std::pow(10.0, std::floor(std::log10(step * (1.0 + 1e-3))));
    if (std::fabs(mantissa - 1.0) > 1e-3 && std::fabs(mantissa - 2.0) > 1e-3 && std::fabs(mantissa - 5.0) > 1e-3) {
        return QStringLiteral("step");
    }
    const double count = axis.min / step;
    if (std::fabs(count) < 1e4 && std::fabs(count - std::round(count)) > 1e-6) {
        return QStringLiteral("no multiple of the step");
    }
    return textOf(adjusted(axis)) == textOf(axis) ? QString() : QStringLiteral("changes again");
}

} // namespace

class BasicToolsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void adjustsTypicalRanges()
    {
        const QVector<QPair<Axis, QString>> cases = {
            {{-10.0, 10.0, 5}, "-10..10/4"}, // the plot at its start
            {{6.5, 7.5, 5}, "6.4..7.6/6"},   // its first sample
            {{0.6, 1.4, 5}, "0.6..1.4/4"},   // 3 times 0.2 is more than 0.6
            {{10.0, 0.0, 5}, "0..10/5"},     {{0.0, 10.0, 0}, "0..10/5"}, {{0.0, 10.0, 4000000000}, "0..10/10"},
            {{0.5, 10.4, 10}, "0..12/6"}, // eleven intervals become six
            {{5.0, 5.0, 5}, "4..6/4"}};
        for (const QPair<Axis, QString> &axis : cases) {
            QCOMPARE(textOf(adjusted(axis.first)), axis.second);
        }
    }

    void adjustsAnyRange()
    {
        const QVector<double> hostile = {0.0,       -7.0,         std::numeric_limits<double>::denorm_min(),
                                         1e15,      1e15 + 0.125, 1e17,
                                         largest,   -largest,     infinity,
                                         -infinity, notANumber};
        for (const double min : hostile) {
            for (const double max : hostile) {
                const Axis wanted{min, max, 5};
                const QString fault = faultOf(adjusted(wanted));
                QVERIFY2(fault.isEmpty(), qPrintable(textOf(wanted) + fault));
            }
        }
        std::mt19937 random(20260401);
        std::uniform_real_distribution<double> mantissa(-10.0, 10.0);
        std::uniform_int_distribution<int> exponent(-200, 200);
        std::uniform_int_distribution<int> nearness(0, 12);
        std::uniform_int_distribution<unsigned int> intervals(0, 15);
        for (int round = 0; round < 20000; ++round) {
            const double from = mantissa(random) * std::pow(10.0, exponent(random));
            const double to = from + mantissa(random) * std::fabs(from) * std::pow(10.0, 1 - nearness(random));
            const Axis wanted{from, to, intervals(random)};
            const Axis axis = adjusted(wanted);
            QVERIFY2(axis.min <= qMin(from, to) && axis.max >= qMax(from, to), qPrintable(textOf(wanted)));
            QVERIFY2(axis.ticks <= 10 && faultOf(axis).isEmpty(), qPrintable(textOf(wanted) + faultOf(axis)));
        }
    }

    void writesNumbers_data()
    {
        QTest::addColumn<QString>("large");
        QTest::addColumn<QString>("fraction");
        QTest::newRow("de_DE") << "-2.147.483.648"
                               << "1.234,5679";
        QTest::newRow("en_GB") << "-2,147,483,648"
                               << "1,234.5679";
        QTest::newRow("de_CH") << u8"-2\u2019147\u2019483\u2019648" << u8"1\u2019234.5679";
        QTest::newRow("C") << "-2,147,483,648"
                           << "1,234.5679"; // which has no groups unless it is asked for them
    }

    void writesNumbers()
    {
        QFETCH(QString, large);
        QFETCH(QString, fraction);
        QLocale::setDefault(QLocale(QString::fromLatin1(QTest::currentDataTag())));
        QCOMPARE(BasicTools::intInsertDot(100.0, 0), QStringLiteral("100"));
        QCOMPARE(BasicTools::intInsertDot(-2147483648.0, 0), large);
        QCOMPARE(BasicTools::intInsertDot(1234.56789, 4), fraction);
        QCOMPARE(BasicTools::intInsertDot(999.6, 0).remove(1, 1), QStringLiteral("1000"));
        QCOMPARE(BasicTools::intInsertDot(-0.004, 2), QLocale().toString(0.0, 'f', 2));
        QCOMPARE(BasicTools::intInsertDot(notANumber, 2), QStringLiteral("nan"));
        QCOMPARE(BasicTools::iToHex(0x0A, 2, QStringLiteral("0x")), QStringLiteral("0x0A"));
        QLocale::setDefault(QLocale::c());
    }

    void iconsAreTintedAndKeepTheirShape()
    {
        QPixmap shape(8, 8);
        shape.fill(QColor(10, 200, 30, 128));
        const auto pixel = [](const QAbstractButton &button, QIcon::Mode mode) {
            return button.icon().pixmap(QSize(8, 8), mode).toImage().pixelColor(4, 4);
        };
        QPushButton button;
        button.setIcon(QIcon(shape));
        const QColor selectedBefore = pixel(button, QIcon::Selected);
        BasicTools::setButtonIconsColor(&button, QColor(255, 0, 0), QColor(0, 0, 255, 128), QColor());
        QCOMPARE(pixel(button, QIcon::Normal), QColor(255, 0, 0, 128));
        QCOMPARE(pixel(button, QIcon::Active), QColor(255, 0, 0, 128));
        QCOMPARE(pixel(button, QIcon::Disabled).blue(), 255);
        QVERIFY(qAbs(pixel(button, QIcon::Disabled).alpha() - 64) <= 1); // of the shape, times the colour's own
        QCOMPARE(pixel(button, QIcon::Selected), selectedBefore);

        button.setIcon(QIcon(QStringLiteral(":/Numbers/Nr1")));
        BasicTools::setButtonIconsColor(&button, Qt::red, QColor(), QColor());
        QImage onHighDpi(48, 48, QImage::Format_ARGB32_Premultiplied);
        onHighDpi.fill(Qt::transparent);
        onHighDpi.setDevicePixelRatio(2.0);
        QPainter painter(&onHighDpi);
        button.icon().paint(&painter, 0, 0, 24, 24);
        painter.end();
        onHighDpi.setDevicePixelRatio(1.0);
        QCOMPARE(onHighDpi, button.icon().pixmap(48, 48).toImage().convertToFormat(onHighDpi.format()));
    }

    void everyIconIsSharp()
    {
        for (const char *path :
             {":/Icons/ClosedLoop", ":/SVG Icons/ScreenshotData", ":/SVG Icons/ResetData", ":/SVG Icons/ExportData",
              ":/SVG Icons/DotsLine", ":/SVG Icons/Linked", ":/SVG Icons/PlusMinus", ":/SVGlist/AppendListEntry",
              ":/moreIconsII/XYPlot", ":/moreIcons/ZoomIn", ":/moreIcons/ZoomOut", ":/Numbers/NrNo", ":/Numbers/Nr1",
              ":/Numbers/Nr2", ":/Numbers/Nr3", ":/Numbers/Nr4"}) {
            const QIcon icon(QString::fromLatin1(path));
            const QImage picture = icon.pixmap(48, 48).toImage();
            QCOMPARE(picture.size(), QSize(48, 48));
            // Neither a scaled-up smaller picture nor a blank one.
            const QImage small = icon.pixmap(24, 24).toImage();
            const QImage enlarged = small.scaled(48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            QVERIFY2(picture != enlarged, path);
        }
    }
};

GUARDED_TEST(BasicToolsTest)
#include "BasicToolsTest.moc"
