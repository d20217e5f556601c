#pragma once

#include "setup/ModuleFields.h"

/// The fields of recordings: "file", "beside", "playing", "repeated" and "speedTenths".
ModuleFields recordingFields();

/// Lets the relative paths of recordings among \a modules begin in \a folder.
void resolveRecordings(QList<ModuleSettings> &modules, const QString &folder);
