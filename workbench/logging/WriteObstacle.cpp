#include "logging/WriteObstacle.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStorageInfo>

namespace
{

constexpr qint64 leastFreeBytes = 4096; // a block: with less, not even a line is sure to fit

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(WriteObstacle)
};

} // namespace

QString writeObstacle(const QString &path)
{
    const QFileInfo file(path);
    const QFileInfo folder(file.absolutePath());
    if (file.isDir()) {
        return Text::tr("it is a folder");
    }
    if (!folder.isDir()) {
        return Text::tr("there is no such folder");
    }
    if (file.exists() ? !file.isWritable() : !folder.isWritable()) {
        return Text::tr("writing is not allowed");
    }
    const QStorageInfo storage(folder.absoluteFilePath());
    if (storage.isValid() && storage.isReadOnly()) {
        return Text::tr("the file system is read-only");
    }
    if (storage.isValid() && storage.bytesTotal() > 0 && storage.bytesAvailable() < leastFreeBytes) {
        return Text::tr("the disk is full");
    }
    return {};
}
