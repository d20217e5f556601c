#include "Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>

namespace
{

constexpr double longestRunSeconds = 86400.0;
constexpr int largestSidePixels = 8192;

QString translated(const char *text)
{
    return QCoreApplication::translate("Options", text);
}

QList<QCommandLineOption> allOptions()
{
    const auto option = [](const char *name, const char *description, const char *value) {
        return QCommandLineOption(QString::fromLatin1(name), translated(description),
                                  value == nullptr ? QString() : QString::fromLatin1(value));
    };
    return {
        option("scene", "Set up a scene: a name from --list-scenes, or a scene file.", "NAME|FILE"),
        option("seconds", "Run the scene (default: circle) that long, save a picture and end; default 5.", "N"),
        option("picture", "Where to save that picture, a PNG; default ./xy-plot.png.", "FILE"),
        option("size", "Size of the plot window in pixels; pictures have 1000x600 unless this is given.", "WxH"),
        option("seed", "Seed of all simulated noise, in place of the scene's own.", "N"),
        option("plugin", "The container plugin to load; default ../plugins/container_xy_plot.so beside the program.",
               "FILE"),
        option("palette", "Colours of the windows: light, dark or system (the default).", "NAME"),
        option("settings", "The settings file; scenes use one that is thrown away unless this is given.", "FILE"),
        option("list-scenes", "List the shipped scenes and end.", nullptr),
        option("help", "Show this text and end.", nullptr),
    };
}

/// The value of an option that was given; complains when it is blank, which a shell variable easily is.
QString textOf(const QCommandLineParser &parser, const char *name, QString &error)
{
    const QString option = QString::fromLatin1(name);
    if (!parser.isSet(option)) {
        return {};
    }
    QString text = parser.value(option);
    if (text.trimmed().isEmpty() && error.isEmpty()) {
        error = translated("--%1: expected a value, found none").arg(option);
    }
    return text;
}

void readSeconds(const QString &text, Options &options, QString &error)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(seconds) || seconds <= 0.0 || seconds > longestRunSeconds) {
        error = translated("--seconds: expected a number above 0 and up to %1, found \"%2\"")
                    .arg(longestRunSeconds)
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
    if (!match.hasMatch() || size.isEmpty() || qMax(size.width(), size.height()) > largestSidePixels) {
        error = translated("--size: expected WIDTHxHEIGHT with sides of 1 to %1, for example 1000x600, found \"%2\"")
                    .arg(largestSidePixels)
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
        error = translated("--seed: expected a whole number from 0 to 4294967295, found \"%1\"").arg(text);
        return;
    }
    options.seed = seed;
}

void readPalette(const QString &text, Options &options, QString &error)
{
    const std::optional<PaletteChoice> choice = paletteChoice(text);
    if (!choice) {
        error = translated("--palette: expected light, dark or system, found \"%1\"").arg(text);
        return;
    }
    options.palette = *choice;
}

} // namespace

OptionsResult parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOptions(allOptions());
    OptionsResult result;
    if (!parser.parse(arguments)) {
        result.error = parser.errorText();
        return result;
    }
    if (!parser.positionalArguments().isEmpty()) {
        result.error = translated("Unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst());
        return result;
    }
    Options &options = result.options;
    options.wantsHelp = parser.isSet(QStringLiteral("help"));
    options.wantsSceneList = parser.isSet(QStringLiteral("list-scenes"));
    options.scene = textOf(parser, "scene", result.error);
    options.picture = textOf(parser, "picture", result.error);
    options.plugin = textOf(parser, "plugin", result.error);
    options.settings = textOf(parser, "settings", result.error);

    using Reader = void (*)(const QString &, Options &, QString &);
    const QList<QPair<const char *, Reader>> readers = {
        {"seconds", readSeconds}, {"size", readSize}, {"seed", readSeed}, {"palette", readPalette}};
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
    QString text = translated("Usage: xy-plot-workbench [options]\n\n"
                              "A stand-in host for container plugins, with simulated motor-controller modules.\n"
                              "Without a display it runs a scene off screen, saves a picture of the plot and ends.\n\n"
                              "Options:\n");
    constexpr int columnWidth = 22;
    const QList<QCommandLineOption> options = allOptions();
    for (const QCommandLineOption &option : options) {
        const QString left = QStringLiteral("  --%1 %2").arg(option.names().constFirst(), option.valueName());
        text += left.leftJustified(columnWidth) + QLatin1Char(' ') + option.description() + QLatin1Char('\n');
    }
    return text;
}
