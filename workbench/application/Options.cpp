#include "application/Options.h"

#include "application/Language.h"
#include "modules/modbus/DeviceText.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>

namespace
{

constexpr double maximumRunSeconds = 86400.0;
constexpr int maximumSidePixels = 8192;

struct OptionsText
{
    Q_DECLARE_TR_FUNCTIONS(Options)
};

QList<QCommandLineOption> allOptions()
{
    const auto option = [](const char *name, const QString &description, const char *value) {
        return QCommandLineOption(QString::fromLatin1(name), description,
                                  value == nullptr ? QString() : QString::fromLatin1(value));
    };
    return {
        option("scene",
               OptionsText::tr(
                   "Set up a scene: a name from --list-scenes, or a file with a set-up. Nothing that was kept from "
                   "earlier runs has a part in it."),
               "NAME|FILE"),
        option("recording",
               OptionsText::tr(
                   "Play a recording: a CSV file that was logged, or any other with a header line. Its curves are "
                   "shown, or those of --scene when that is given."),
               "FILE"),
        option("device",
               OptionsText::tr(
                   "Add a Modbus device: modbus-tcp:HOST:PORT/UNIT,MAP or "
                   "modbus-rtu:PORT:BAUD[:PARITY[:STOPBITS]]/UNIT,MAP, where MAP is its register map; may be given "
                   "more than once. Without --scene the first two values of an axis are drawn."),
               "DEVICE"),
        option("seconds",
               OptionsText::tr("Run the scene (default: circle) that long, save a picture and end; default 5."), "N"),
        option("picture",
               OptionsText::tr("Where to save that picture, a PNG of the whole container; default ./xy-plot.png."),
               "FILE"),
        option("log",
               OptionsText::tr("Record the run to a CSV file, by the window's own box and dialog; an existing file is "
                               "overwritten. A picture is then saved only with --picture."),
               "FILE"),
        option("size",
               OptionsText::tr("Size of the plot window in pixels; pictures have 1000x600 unless this is given."),
               "WxH"),
        option("seed", OptionsText::tr("Seed of all simulated noise, in place of the scene's own."), "N"),
        option(
            "plugin",
            OptionsText::tr("A container plugin to load, or a folder of them; may be given more than once. Without it, "
                            "those that came with the program and those in the user's plugin folder are loaded."),
            "FILE|FOLDER"),
        option("palette",
               OptionsText::tr("Colours of the windows: light, dark or system; by default as chosen in the View menu."),
               "NAME"),
        option("language",
               OptionsText::tr("Language of the workbench: de or en; by default as chosen in the View menu."), "CODE"),
        option("settings",
               OptionsText::tr("The settings file; scenes use one that is thrown away unless this is given."), "FILE"),
        option("list-scenes", OptionsText::tr("List the shipped scenes and end."), nullptr),
        option("list-plugins", OptionsText::tr("List the plugins, whether they are of use, and end."), nullptr),
        option("self-test",
               OptionsText::tr("Look whether this program and its plugins are complete and work, and end."), nullptr),
        option("version", OptionsText::tr("Show the version and end."), nullptr),
        option("help", OptionsText::tr("Show this text and end."), nullptr),
    };
}

/// The value of an option that was given; an error when it is blank, as an unset shell variable is.
QString textOf(const QCommandLineParser &parser, const char *name, QString &error)
{
    const QString option = QString::fromLatin1(name);
    if (!parser.isSet(option)) {
        return {};
    }
    QString text = parser.value(option);
    if (text.trimmed().isEmpty() && error.isEmpty()) {
        error = OptionsText::tr("--%1: expected a value, found none").arg(option);
    }
    return text;
}

/// A file name is taken as it is, but none that promises another kind of picture.
void checkPicture(const QString &path, QString &error)
{
    static const QRegularExpression otherKind(QStringLiteral("\\.(jpe?g|bmp|gif|tiff?|webp|svg|pdf)$"),
                                              QRegularExpression::CaseInsensitiveOption);
    if (error.isEmpty() && otherKind.match(path).hasMatch()) {
        error = OptionsText::tr("--picture: expected the name of a PNG file, found \"%1\"").arg(path);
    }
}

void readSeconds(const QString &text, Options &options, QString &error)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds <= 0.0 || seconds > maximumRunSeconds) {
        error = OptionsText::tr("--seconds: expected a number above 0 and up to %1, found \"%2\"")
                    .arg(maximumRunSeconds)
                    .arg(text);
        return;
    }
    options.seconds = seconds;
}

void readSize(const QString &text, Options &options, QString &error)
{
    static const QRegularExpression pattern(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || size.isEmpty() || qMax(size.width(), size.height()) > maximumSidePixels) {
        error =
            OptionsText::tr("--size: expected WIDTHxHEIGHT with sides of 1 to %1, for example 1000x600, found \"%2\"")
                .arg(maximumSidePixels)
                .arg(text);
        return;
    }
    options.size = size;
}

void readSeed(const QString &text, Options &options, QString &error)
{
    bool isNumber = false;
    const quint32 seed = text.toUInt(&isNumber);
    if (!isNumber) {
        error = OptionsText::tr("--seed: expected a whole number from 0 to 4294967295, found \"%1\"").arg(text);
        return;
    }
    options.seed = seed;
}

void readPalette(const QString &text, Options &options, QString &error)
{
    const std::optional<PaletteChoice> choice = paletteChoice(text);
    if (!choice) {
        error = OptionsText::tr("--palette: expected light, dark or system, found \"%1\"").arg(text);
        return;
    }
    options.palette = *choice;
}

void readLanguage(const QString &text, Options &options, QString &error)
{
    if (!Language::codes().contains(text)) {
        error = OptionsText::tr("--language: expected %1, found \"%2\"")
                    .arg(Language::codes().join(OptionsText::tr(" or ")), text);
        return;
    }
    options.language = text;
}

void readDevices(const QStringList &texts, Options &options, QString &error)
{
    for (const QString &text : texts) {
        DeviceTextResult result = deviceFromText(text);
        if (!result.error.isEmpty() && error.isEmpty()) {
            error = QStringLiteral("--device: ") + result.error;
        }
        result.device.mapFile = QFileInfo(result.device.mapFile).absoluteFilePath();
        options.devices.append(result.device);
    }
}

} // namespace

QString languageOption(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOptions(allOptions());
    parser.parse(arguments); // as far as it can be read
    const QString code = parser.value(QStringLiteral("language"));
    return Language::codes().contains(code) ? code : QString();
}

OptionsResult parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOptions(allOptions());
    OptionsResult result;
    if (!parser.parse(arguments)) {
        result.error = parser.errorText();
        return result;
    }
    Options &options = result.options;
    const QStringList files = parser.positionalArguments();
    options.file = files.value(0);
    if (files.size() > 1 || (files.size() == 1 && parser.isSet(QStringLiteral("scene")))) {
        result.error = OptionsText::tr("Unexpected argument \"%1\"").arg(files.constLast());
        return result;
    }
    options.wantsHelp = parser.isSet(QStringLiteral("help"));
    options.wantsVersion = parser.isSet(QStringLiteral("version"));
    options.wantsSceneList = parser.isSet(QStringLiteral("list-scenes"));
    options.wantsPluginList = parser.isSet(QStringLiteral("list-plugins"));
    options.wantsSelfTest = parser.isSet(QStringLiteral("self-test"));
    options.scene = textOf(parser, "scene", result.error);
    options.recording = textOf(parser, "recording", result.error);
    options.picture = textOf(parser, "picture", result.error);
    checkPicture(options.picture, result.error);
    textOf(parser, "device", result.error);
    readDevices(parser.values(QStringLiteral("device")), options, result.error);
    textOf(parser, "plugin", result.error);
    options.plugins = parser.values(QStringLiteral("plugin"));
    options.settings = textOf(parser, "settings", result.error);
    options.log = textOf(parser, "log", result.error);

    using Reader = void (*)(const QString &, Options &, QString &);
    const QList<QPair<const char *, Reader>> readers = {{"language", readLanguage},
                                                        {"seconds", readSeconds},
                                                        {"size", readSize},
                                                        {"seed", readSeed},
                                                        {"palette", readPalette}};
    for (const auto &[name, read] : readers) {
        const QString text = textOf(parser, name, result.error);
        if (parser.isSet(QString::fromLatin1(name)) && result.error.isEmpty()) {
            read(text, options, result.error);
        }
    }
    return result;
}

QString optionsHelp()
{
    QString text =
        OptionsText::tr("Usage: xy-plot-workbench [options] [FILE]\n\n"
                        "A stand-in host for container plugins, with simulated motor-controller modules.\n"
                        "FILE is a set-up to open, as the File menu saves it.\n"
                        "Without a display it runs a scene off screen, saves a picture of its window and ends.\n\n"
                        "Options:\n");
    constexpr int columnWidth = 22;
    const QList<QCommandLineOption> options = allOptions();
    for (const QCommandLineOption &option : options) {
        const QString left = QStringLiteral("  --%1 %2").arg(option.names().constFirst(), option.valueName());
        text += left.leftJustified(columnWidth) + QLatin1Char(' ') + option.description() + QLatin1Char('\n');
    }
    text += OptionsText::tr(
        "\nA signal (SIGINT, SIGTERM, SIGHUP) ends a run as closing the window does, with exit code 128 + its "
        "number.\nA second one ends it at once.\n");
    return text;
}
