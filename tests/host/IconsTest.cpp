#include "GuardedTest.h"
#include "host/BasicTools.h"
#include "host/CurveColors.h"

#include <QPushButton>

namespace
{

QImage pictureOf(const QIcon &icon, int pixels, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(pixels, pixels), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

int visiblePixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    return count;
}

/// The greatest difference of two channels that should be alike; premultiplying costs a digit or two.
int difference(QRgb a, QRgb b)
{
    return qMax(qMax(qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b))),
                qMax(qAbs(qBlue(a) - qBlue(b)), qAbs(qAlpha(a) - qAlpha(b))));
}

} // namespace

class IconsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void everyPathHasACrispPicture_data()
    {
        QTest::addColumn<QString>("path");
        for (const char *path :
             {":/Icons/ClosedLoop", ":/SVG Icons/ScreenshotData", ":/SVG Icons/ResetData", ":/SVG Icons/ExportData",
              ":/SVG Icons/DotsLine", ":/SVG Icons/Linked", ":/SVG Icons/PlusMinus", ":/SVGlist/AppendListEntry",
              ":/moreIconsII/XYPlot", ":/moreIcons/ZoomIn", ":/moreIcons/ZoomOut", ":/Numbers/NrNo", ":/Numbers/Nr1",
              ":/Numbers/Nr2", ":/Numbers/Nr3", ":/Numbers/Nr4"}) {
            QTest::newRow(path) << QString::fromLatin1(path);
        }
    }

    void everyPathHasACrispPicture()
    {
        QFETCH(QString, path);
        QIcon added;
        added.addFile(path, QSize(), QIcon::Normal, QIcon::Off);
        const QVector<QIcon> icons = {QIcon(path), added};
        for (const QIcon &icon : icons) {
            for (const int pixels : {16, 24, 32, 48, 72}) {
                const QImage picture = pictureOf(icon, pixels);
                QCOMPARE(picture.size(), QSize(pixels, pixels));
                const int share = visiblePixels(picture) * 100 / (pixels * pixels);
                QVERIFY2(share > 8 && share < 90, qPrintable(QString::number(share)));
            }
            QVERIFY(pictureOf(icon, 48) !=
                    pictureOf(icon, 24).scaled(48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        }
    }

    void tintsAndKeepsTheShape_data()
    {
        QTest::addColumn<int>("pixels");
        QTest::newRow("1x") << 24;
        QTest::newRow("2x") << 48;
        QTest::newRow("3x") << 72;
    }

    void tintsAndKeepsTheShape()
    {
        QFETCH(int, pixels);
        const QIcon source(QStringLiteral(":/Numbers/Nr1"));
        const QColor selected(1, 2, 3);
        QPushButton button(source, QString());
        BasicTools::setButtonIconsColor(&button, colorForIds[0], QColor(), selected);
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Active, QIcon::Selected}) {
            const QColor tint = mode == QIcon::Selected ? selected : colorForIds[0];
            const QImage shape = pictureOf(source, pixels, mode);
            const QImage tinted = pictureOf(button.icon(), pixels, mode);
            QCOMPARE(tinted.size(), shape.size());
            for (int y = 0; y < pixels; ++y) {
                for (int x = 0; x < pixels; ++x) {
                    const int alpha = qAlpha(shape.pixel(x, y)) * tint.alpha() / 255;
                    QVERIFY(qAbs(qAlpha(tinted.pixel(x, y)) - alpha) <= 2);
                }
            }
            const QRgb inside = qRgba(tint.red(), tint.green(), tint.blue(), tint.alpha());
            QVERIFY(difference(tinted.pixel(pixels / 6, pixels / 2), inside) <= 2);
        }
        QCOMPARE(pictureOf(button.icon(), pixels, QIcon::Disabled), pictureOf(source, pixels, QIcon::Disabled));
    }

    void tintsNothingWithoutAnIcon()
    {
        QPushButton button;
        BasicTools::setButtonIconsColor(&button, Qt::red, Qt::red, Qt::red);
        QVERIFY(button.icon().isNull());
        BasicTools::setButtonIconsColor(nullptr, Qt::red, Qt::red, Qt::red);
    }
};

GUARDED_TEST_MAIN(IconsTest)
#include "IconsTest.moc"
