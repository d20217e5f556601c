#include "application/PluginFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace
{

struct PluginFoldersText
{
    Q_DECLARE_TR_FUNCTIONS(PluginFolders)
};

const QString firstPlugin = QStringLiteral("container_xy_plot.so");

QStringList filesIn(const QString &folder)
{
    QStringList files;
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.so")}, QDir::Files, QDir::Name);
    for (const QString &name : names) {
        files.append(folder + QLatin1Char('/') + name);
    }
    return files;
}

} // namespace

QString PluginFolders::own()
{
    const QDir programFolder(QCoreApplication::applicationDirPath());
    QString installed = QDir::cleanPath(programFolder.filePath(QStringLiteral(INSTALLED_PLUGIN_FOLDER)));
    const QString built = QDir::cleanPath(programFolder.filePath(QStringLiteral("../plugins")));
    return !QFileInfo(installed).isDir() && QFileInfo(built).isDir() ? built : installed;
}

QString PluginFolders::ofUser()
{
    // Not by the application's name, which a program has only after it was given one.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/xy-plot-workbench/plugins");
}

QString PluginFolders::plotterFile()
{
    return own() + QLatin1Char('/') + firstPlugin;
}

QStringList PluginFolders::withPlotter(const QStringList &asked)
{
    const QStringList found = files(asked);
    const bool hasPlotter = std::any_of(found.cbegin(), found.cend(),
                                        [](const QString &file) { return QFileInfo(file).fileName() == firstPlugin; });
    return asked.isEmpty() || found.isEmpty() || hasPlotter ? asked : QStringList(plotterFile()) + asked;
}

QStringList PluginFolders::files(const QStringList &asked)
{
    if (!asked.isEmpty()) {
        QStringList found;
        for (const QString &path : asked) {
            found += QFileInfo(path).isDir() ? filesIn(path) : QStringList(path);
        }
        return found;
    }
    const QString first = plotterFile();
    QStringList found = filesIn(own()) + filesIn(ofUser());
    found.removeAll(first);
    found.prepend(first); // first even when it is missing: the loader's message then names the expected path
    return found;
}

QString PluginFolders::noFilesText(const QStringList &asked)
{
    return PluginFoldersText::tr("%1: there is no plugin file in it").arg(asked.join(QStringLiteral(", ")));
}
