#include "host/HostLogging.h"

Q_LOGGING_CATEGORY(debLowLevel, "host.lowlevel", QtInfoMsg)
