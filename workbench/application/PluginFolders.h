#pragma once

#include <QString>
#include <QStringList>

/// Where the workbench's plugin files are. Needs the application object.
namespace PluginFolders
{

/// The folder that came with the program, absolute: it lies beside the program, in a build as when installed.
QString own();

/// The folder for plugins of the person who runs the program, absolute; it need not exist.
QString ofUser();

/// The path of the XY-Plotter that came with the program; the file may be missing.
QString plotterFile();

/// \a asked, with plotterFile() before it if none of files(\a asked) is an XY-Plotter, for which scenes are made.
QStringList withPlotter(const QStringList &asked);

/**
 * The plugin files to load, in text order within a folder.
 * \param asked files, and folders for all files in them, in the order wanted; when empty, own() and ofUser() are taken,
 *              and the XY-Plotter's own file is the first, even if it is missing: scenes are made for it
 */
QStringList files(const QStringList &asked);

/// The error, one line, when there are no files(\a asked).
QString noFilesText(const QStringList &asked);

} // namespace PluginFolders
