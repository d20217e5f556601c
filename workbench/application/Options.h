#pragma once

#include "modules/modbus/DeviceSettings.h"
#include "window/Palettes.h"

#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// The values of the command line's options; empty or unset members were not given.
struct Options
{
    QString scene;                 ///< name of a shipped scene, or path of a set-up
    QString file;                  ///< path of a set-up, or of another file to open
    QString recording;             ///< path of a CSV file to play
    QList<DeviceSettings> devices; ///< with absolute paths
    std::optional<double> seconds; ///< s, more than 0
    QString picture;               ///< path of the PNG file
    QStringList plugins;           ///< paths of plugin files, or of folders of them
    QSize size;                    ///< of the container in its window, widget pixels; invalid when not given
    std::optional<quint32> seed;
    std::optional<PaletteChoice> palette;
    QString settings; ///< path of the settings file
    QString log;      ///< path of the CSV file
    QString language; ///< one of Language::codes()
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool wantsSceneList = false;
    bool wantsPluginList = false;
    bool wantsSelfTest = false;
};

/// Options, or one line that says what is wrong with them; \c error is empty when nothing is.
struct OptionsResult
{
    Options options;
    QString error;
};

/// The value of --language, one of Language::codes(); empty when there is none. Errors are given in this language.
QString languageOption(const QStringList &arguments);

/// Reads a command line; the first of \a arguments is the program and skipped. Needs no application object.
OptionsResult parseOptions(const QStringList &arguments);

/// The help text: every option with what it takes and does, ended by a line feed.
QString optionsHelp();
