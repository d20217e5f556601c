#include "Readers.h"

#include "application/Language.h"
#include "modules/modbus/RegisterMapReader.h"
#include "modules/recording/RecordingFile.h"
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
    shippedScenes(); // registers the resources
    return contentOf(shippedScenePath("four-curves"));
}

QString readSceneBytes(const QByteArray &bytes)
{
    return readScene(bytes, "scene.json").error;
}

QString readScenePath(const QString &path)
{
    return readSceneFile(path).error;
}

QByteArray mapSample()
{
    return R"({
    "title": "T", "wordOrder": "high first",
    "values": [
        { "name": "P", "table": "holding register", "address": "0x10", "type": "int32", "axis": 0 },
        { "name": "S", "table": "holding register", "address": 18, "type": "uint16", "axis": 0,
          "fields": [ { "name": "F", "bit": 12, "width": 4, "signed": true } ] },
        { "name": "C", "table": "input register", "address": 18, "type": "float32", "resolution": 0.1 },
        { "name": "O", "table": "coil", "address": 0 }
    ]
})";
}

QString readMapBytes(const QByteArray &bytes)
{
    return readRegisterMap(bytes, "map.json").error;
}

QString readMapPath(const QString &path)
{
    return readRegisterMapFile(path).error;
}

QByteArray recordingSample()
{
    QByteArray text = "Module:;A [Axis 0];B;A [Axis 0];B;\r\nCounter;x [mm];y;u;v;\r\n";
    for (int number = 1; number < 60; ++number) {
        text += QByteArray::number(number) + ";" + QByteArray::number(number * 7) + ";-12.5;" +
                (number % 3 == 0 ? ";;" : "1e3;\"4\";") + "\r\n";
    }
    return text;
}

/// Opens the file and plays every row of it.
QString readRecordingPath(const QString &path)
{
    const RecordingFile::Result result = RecordingFile::open(path);
    if (!result.error.isEmpty()) {
        return result.error;
    }
    const int rows = qMin(result.file->rowCount(), 2000);
    for (int row = rows - 1; row >= 0; --row) {
        for (int column = 0; column < result.file->columns().size(); ++column) {
            (void)result.file->value(row, column);
        }
        (void)result.file->rowAt(result.file->stepOf(row));
    }
    return {};
}

QString readRecordingBytes(const QByteArray &bytes)
{
    QTemporaryFile file;
    return file.open() && file.write(bytes) == bytes.size() && file.flush() ? readRecordingPath(file.fileName())
                                                                            : "no temporary file";
}

/// Without "@Variant": those who write settings here use texts, numbers and bytes only, and Qt's reader of the rest
/// allocates whatever size it finds.
QByteArray settingsSample()
{
    return "[Plot]\nS%5CM\\0X=3\nrow=12\n[ExportCSV]\nSeparator=1\nFolder=/tmp\n"
           "[Pictures]\nFolder=@Invalid()\n[MainWindow]\nGeometry=@ByteArray(\\x1\\xd9\\xd0\\xcb\\0\\x3\\0\\0)\n";
}

/// Every value as every type that is read somewhere.
QString readSettings(const QByteArray &bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush()) {
        return "no temporary file";
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
    Language::use("de"); // registers the resources
    return contentOf(":/translations/xy-plot-workbench_de.qm");
}

QString readTranslation(const QByteArray &bytes)
{
    QTranslator translator;
    if (!translator.load(reinterpret_cast<const uchar *>(bytes.constData()), bytes.size())) {
        return "refused";
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
        {"register map", mapSample, readMapBytes, readMapPath},
        {"recording", recordingSample, readRecordingBytes, readRecordingPath},
        {"settings file", settingsSample, readSettings, nullptr},
        {"translation", translationSample, readTranslation, nullptr, true},
    };
    return all;
}
