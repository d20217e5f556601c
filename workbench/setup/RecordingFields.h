#pragma once

#include "setup/ModuleFields.h"

/// The fields of recordings: "file", "beside", "playing", "repeated" and "speedTenths".
ModuleFields recordingFields();

/// Makes relative paths of recordings absolute: they count from \a folder, that of the set-up.
void resolveRecordings(QList<ModuleSettings> &modules, const QString &folder);
