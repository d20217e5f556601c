#include "window/RecentFiles.h"

#include "host/AppSettings.h"

#include <QFileInfo>

namespace
{

void store(const QStringList &paths)
{
    AppSettings().setValue(QStringLiteral("Workbench/RecentFiles"), paths);
}

} // namespace

QStringList RecentFiles::paths()
{
    QStringList paths = AppSettings().value(QStringLiteral("Workbench/RecentFiles")).toStringList();
    paths.removeAll(QString());
    return paths.mid(0, maximumCount);
}

void RecentFiles::add(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList known = paths();
    known.removeAll(absolute);
    known.prepend(absolute);
    store(known.mid(0, maximumCount));
}

void RecentFiles::remove(const QString &path)
{
    QStringList known = paths();
    known.removeAll(QFileInfo(path).absoluteFilePath());
    store(known);
}

void RecentFiles::clear()
{
    store({});
}
