#include "Readers.h"

#include "application/Language.h"
#include "setup/SceneReader.h"

#include "host/AppSettings.h"

#include <QFile>
#include <QTemporaryFile>
#include <QTranslator>

namespace
{

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray sceneSample()
{
    shippedScenes(); // makes the resources known
    return contentOf(shippedScenePath(QStringLiteral("four-curves")));
}

QString readSceneBytes(const QByteArray &bytes)
{
    return readScene(bytes, QStringLiteral("scene.json")).error;
}

QString readScenePath(const QString &path)
{
    return readSceneFile(path).error;
}

QByteArray settingsSample()
{
    return "[Plot]\nS%5CM\\0X=3\nrow=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x3)\n[ExportCSV]\nSeparator=1\nFolder=/tmp\n"
           "[Pictures]\nFolder=@Invalid()\n[MainWindow]\nGeometry=@ByteArray(\\x1\\xd9\\xd0\\xcb\\0\\x3\\0\\0)\n";
}

/// Every value as every type that is read somewhere.
QString readSettings(const QByteArray &bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush()) {
        return QStringLiteral("no temporary file");
    }
    const QString previous = AppSettings::storeFile();
    AppSettings::setStoreFile(file.fileName());
    {
        AppSettings settings;
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys) {
            const QVariant value = settings.value(key);
            (void)value.toInt();
            (void)value.toString();
            (void)value.toByteArray();
        }
    }
    AppSettings::setStoreFile(previous);
    return {};
}

QByteArray translationSample()
{
    Language::use(QStringLiteral("de")); // makes the resources known
    return contentOf(QStringLiteral(":/translations/xy-plot-workbench_de.qm"));
}

QString readTranslation(const QByteArray &bytes)
{
    QTranslator translator;
    if (!translator.load(reinterpret_cast<const uchar *>(bytes.constData()), bytes.size())) {
        return QStringLiteral("refused");
    }
    for (const char *const text : {"&File", "Messages", "Nothing", "%1 of %2 modules plugged in"}) {
        (void)translator.translate("MainWindow", text);
    }
    return {};
}

} // namespace

const std::vector<Reader> &readers()
{
    static const std::vector<Reader> all{
        {"scene file", sceneSample, readSceneBytes, readScenePath},
        {"settings file", settingsSample, readSettings, nullptr},
        {"translation", translationSample, readTranslation, nullptr},
    };
    return all;
}
