/**
 * Renders a drawing into an icon file with a picture for every usual size: render_icons DRAWING.svg ICON.ico
 *
 * The host's resource paths have no suffix. For such paths Qt recognises an SVG file only where the shared MIME
 * database is installed, but an ICO file by its first bytes. QIcon scales its pictures down, not up, so that all sizes
 * are in it.
 */
#include <QBuffer>
#include <QDataStream>
#include <QGuiApplication>
#include <QImageReader>
#include <QSaveFile>
#include <QVector>

#include <cstdio>

namespace
{

/// 16, 24 and 32 pixels at pixel ratios of 1, 2 and 3, and sizes in between for fractional ratios.
constexpr int sizesPixels[] = {16, 20, 24, 32, 36, 48, 64, 72, 96};
constexpr quint32 headerBytes = 6;
constexpr quint32 entryBytes = 16;
constexpr quint16 iconType = 1;
constexpr quint16 colorPlanes = 1;
constexpr quint16 bitsPerPixel = 32;

QByteArray renderedAsPng(const QString &drawing, int sizePixels)
{
    QImageReader reader(drawing);
    reader.setScaledSize(QSize(sizePixels, sizePixels));
    const QImage image = reader.read();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// The ICO format: a directory, then the pictures, which may be PNG files.
QByteArray iconFile(const QVector<QByteArray> &pictures)
{
    QByteArray content;
    QDataStream stream(&content, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const auto count = static_cast<quint16>(pictures.size());
    stream << quint16(0) << iconType << count;
    quint32 offset = headerBytes + entryBytes * count;
    for (int index = 0; index < pictures.size(); ++index) {
        const auto size = static_cast<quint8>(sizesPixels[index]);
        const auto length = static_cast<quint32>(pictures[index].size());
        stream << size << size << quint8(0) << quint8(0) << colorPlanes << bitsPerPixel << length << offset;
        offset += length;
    }
    for (const QByteArray &picture : pictures) {
        content.append(picture);
    }
    return content;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the build has no screen
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: render_icons DRAWING.svg ICON.ico\n", stderr);
        return 2;
    }
    QVector<QByteArray> pictures;
    for (const int size : sizesPixels) {
        pictures.append(renderedAsPng(arguments[1], size));
        if (pictures.last().isEmpty()) {
            std::fprintf(stderr, "%s cannot be drawn; is the SVG image plugin of Qt installed?\n", argv[1]);
            return 1;
        }
    }
    QSaveFile file(arguments[2]);
    if (!file.open(QIODevice::WriteOnly) || file.write(iconFile(pictures)) < 0 || !file.commit()) {
        std::fprintf(stderr, "%s cannot be written: %s\n", argv[2], qPrintable(file.errorString()));
        return 1;
    }
    return 0;
}
