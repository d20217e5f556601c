#include "host/AppSettings.h"

#include <QStandardPaths>

namespace
{

QString &chosenStoreFile()
{
    static QString path;
    return path;
}

} // namespace

AppSettings::AppSettings() : QSettings(storeFile(), QSettings::IniFormat) {}

AppSettings::~AppSettings() = default;

void AppSettings::setStoreFile(const QString &path)
{
    chosenStoreFile() = path;
}

QString AppSettings::storeFile()
{
    if (!chosenStoreFile().isEmpty()) {
        return chosenStoreFile();
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/xy-plot-workbench/settings.ini");
}
