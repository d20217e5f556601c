#pragma once

#include "host/HostExport.h"

#include <QSettings>

/**
 * The host's settings: an INI file of its own, shared by all who make one of these.
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

    /// Redirects every AppSettings made from now on; an empty path restores the default.
    static void setStoreFile(const QString &path);
    static QString storeFile();
};
