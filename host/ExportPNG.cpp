#include "host/AppSettings.h"
#include "host/BasicTools.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <QStandardPaths>
#include <QWidget>

#include <utility>

namespace
{

/// File names have at most 255 bytes, and a character has up to 3.
constexpr int maximumPrefixCharacters = 64;
constexpr int maximumPicturesPerMillisecond = 1000;

struct ExportPNGText
{
    Q_DECLARE_TR_FUNCTIONS(BasicTools)
};

/// The prefix as the start of a file name that is valid on all platforms, is in no other folder and is not hidden.
QString harmlessPrefix(QString prefix)
{
    for (QChar &character : prefix) {
        if (!character.isPrint() || QStringLiteral("/\\:*?\"<>|").contains(character)) {
            character = QLatin1Char('_');
        }
    }
    while (prefix.startsWith(QLatin1Char('.')) || prefix.startsWith(QLatin1Char(' '))) {
        prefix.remove(0, 1);
    }
    return prefix.isEmpty() ? QStringLiteral("picture") : prefix.left(maximumPrefixCharacters);
}

QString pictureFolder()
{
    const QString chosen = AppSettings().value(QStringLiteral("Pictures/Folder")).toString();
    if (!chosen.isEmpty()) {
        return QDir(chosen).absolutePath();
    }
    const QString standard = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return standard.isEmpty() ? QDir::homePath() : standard;
}

/// Creates a file and fails if it exists: safe even when two processes save at once.
bool openNewFile(QFile &file, const QString &pathWithoutSuffix)
{
    for (int number = 1; number <= maximumPicturesPerMillisecond; ++number) {
        const QString appendix = number == 1 ? QString() : QStringLiteral("_%1").arg(number);
        file.setFileName(pathWithoutSuffix + appendix + QStringLiteral(".png"));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            return true;
        }
        if (!QFileInfo::exists(file.fileName())) {
            return false;
        }
    }
    return false;
}

} // namespace

QString BasicTools::ExportPNG(QWidget *widget, QString prefix)
{
    if (widget == nullptr) {
        return ExportPNGText::tr("There is no window to take a picture of.");
    }
    const QPixmap picture = widget->grab();
    if (picture.isNull()) {
        return ExportPNGText::tr("The window is too small for a picture.");
    }
    const QString folder = pictureFolder();
    if (!QDir().mkpath(folder)) {
        return ExportPNGText::tr("The picture folder %1 cannot be made.").arg(folder);
    }
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("_yyyyMMdd_hhmmss_zzz"));
    QFile file;
    if (!openNewFile(file, folder + QLatin1Char('/') + harmlessPrefix(std::move(prefix)) + time)) {
        return ExportPNGText::tr("The picture %1 cannot be written: %2.").arg(file.fileName(), file.errorString());
    }
    if (!picture.save(&file, "PNG") || !file.flush()) {
        const QString reason = file.errorString();
        file.remove();
        return ExportPNGText::tr("The picture %1 cannot be written: %2.").arg(file.fileName(), reason);
    }
    return file.fileName();
}
