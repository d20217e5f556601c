#include "host/ReplaceableFile.h"

#include <QCoreApplication>
#include <QFileInfo>

QString obstacleToReplacing(const QString &path)
{
    const QFileInfo target(path);
    if (!target.exists() || target.isFile()) {
        return {};
    }
    return target.isDir() ? QCoreApplication::translate("ReplaceableFile", "There is a folder of that name.")
                          : QCoreApplication::translate("ReplaceableFile",
                                                        "It is no ordinary file but a device, a pipe or a socket.");
}
