#pragma once

#include "host/HostExport.h"

#include <QLoggingCategory>

/// The host's category for low-level debug output, "host.lowlevel"; its debug level is off unless a rule turns it on.
HOST_EXPORT const QLoggingCategory &debLowLevel();
