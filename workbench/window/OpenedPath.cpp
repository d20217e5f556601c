#include "window/OpenedPath.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

void OpenedPath::open(const QString &path)
{
    if (!QFileInfo::exists(path)) {
        qWarning("%s is not there any more", qUtf8Printable(path));
    } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        qWarning("No program opened %s", qUtf8Printable(path));
    }
}

void OpenedPath::openFolder(const QString &path)
{
    const QFileInfo info(path);
    open(info.isDir() ? path : info.absolutePath());
}
