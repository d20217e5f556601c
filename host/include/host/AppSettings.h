#pragma once

#include "host/HostExport.h"

#include <QSettings>

/**
 * The host's settings: an INI file that all instances share.
 *
 * The file is "settings.ini" in the user's configuration folder for this application, unless setStoreFile() named
 * another one before. GUI thread.
 */
class HOST_EXPORT AppSettings : public QSettings
{
    Q_OBJECT

public:
    AppSettings();
    ~AppSettings() override;

    /// Sets the file of all instances that are constructed from now on; an empty path restores the default. For tests.
    static void setStoreFile(const QString &path);
    static QString storeFile();
};
