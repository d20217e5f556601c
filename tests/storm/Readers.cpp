#include "Readers.h"

#include "application/Language.h"
#include "modules/modbus/RegisterMapReader.h"
#include "modules/recording/RecordingFile.h"
#include "setup/SceneReader.h"
#include "window/HintBar.h"
#include "window/PluginFile.h"
#include "window/Preferences.h"
#include "window/RecentFiles.h"
#include "window/WindowState.h"

#include "host/AppSettings.h"
#include "host/ExportCSV.h"

#include <QDockWidget>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTranslator>

namespace
{

QByteArray sceneSample()
{
    shippedScenes(); // registers the resources
    return contentOf(shippedScenePath("four-curves"));
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

/// Has settings with this content used from now on; returns the path of their file.
QString useSettings(const QByteArray &content)
{
    static const QTemporaryDir folder;
    static int number = 0; // another name each time: Qt keeps what it has read, by name, time and size
    QFile::remove(folder.filePath(QString::number(number)));
    QFile file(folder.filePath(QString::number(++number)));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    AppSettings::setStoreFile(file.fileName());
    return file.fileName();
}

/// A window that comes back as it was.
struct KeptWindow
{
    KeptWindow()
    {
        auto *const dock = new QDockWidget("Dock", &window);
        dock->setObjectName("dock");
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        new WindowState(&window);
    }

    QMainWindow window;
};

/// Without "@Variant": those who write settings here use texts, numbers, rectangles and bytes only, and Qt's reader of
/// the rest allocates whatever size it finds.
QByteArray settingsSample()
{
    const QString path = useSettings("[Plot]\nS%5CM\\0X=3\nrow=12\n[ExportCSV]\nSeparator=1\nFolder=/tmp\n"
                                     "[Pictures]\nFolder=@Invalid()\n");
    KeptWindow().window.close();
    RecentFiles::add("/tmp/a, b.json");
    Preferences::setPalette(PaletteChoice::Dark);
    Preferences::setLanguage("de");
    return contentOf(path);
}

/// All that the workbench reads at its start and for its windows.
QString readSettings(const QByteArray &bytes)
{
    if (bytes.contains("Variant(") || bytes.contains("DateTime(")) {
        return "refused";
    }
    useSettings(bytes);
    const KeptWindow kept;
    (void)HintBar::wasClosed();
    (void)Preferences::palette();
    (void)Language::codes().contains(Preferences::language());
    RecentFiles::add("/tmp/new");
    RecentFiles::remove(RecentFiles::paths().value(0));
    QStandardItemModel model(1, 1);
    delete new ExportCSV(&model, nullptr, {});
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const bool isMaximised = kept.window.isMaximized();
    return isMaximised || screen.contains(QRect(kept.window.pos(), kept.window.size())) ? QString()
                                                                                        : "a window\noff the screen";
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

constexpr int metaDataBytes = 400;

QByteArray metaDataSample()
{
    const QByteArray code = contentOf(PLUGIN);
    const int begin = code.indexOf("QTMETADATA");
    return begin < 0 ? QByteArray() : code.mid(begin, metaDataBytes);
}

/// Loads the plugin with \a bytes as what it says about itself; the rest of it is code, which nobody can check.
QString readMetaData(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath("plugin.so");
    static const int begin = QFile::copy(PLUGIN, path) ? contentOf(path).indexOf("QTMETADATA") : 0;
    QFile file(path);
    file.open(QIODevice::ReadWrite);
    file.seek(begin);
    file.write(bytes.leftJustified(metaDataBytes, '\0', true));
    file.close();
    return PluginFile().load(path);
}

} // namespace

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const std::vector<Reader> &readers()
{
    static const std::vector<Reader> all{
        {"scene file", sceneSample, [](const QByteArray &bytes) { return readScene(bytes, "scene.json").error; },
         [](const QString &path) { return readSceneFile(path).error; }},
        {"register map", mapSample, [](const QByteArray &bytes) { return readRegisterMap(bytes, "map.json").error; },
         [](const QString &path) { return readRegisterMapFile(path).error; }},
        {"recording", recordingSample, readRecordingBytes, readRecordingPath},
        {"settings file", settingsSample, readSettings, nullptr, Reader::Forked::No, 300}, // each makes windows
        {"answer of a device", answerSample, readAnswer, nullptr},
        {"translation", translationSample, readTranslation, nullptr, Reader::Forked::MayCrash},
        {"metadata of a plugin", metaDataSample, readMetaData, nullptr, Reader::Forked::Yes, 300},
    };
    return all;
}
