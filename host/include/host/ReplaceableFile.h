#pragma once

#include "host/HostExport.h"

#include <QString>

/**
 * The reason why \a path must not be overwritten by saving, as a sentence for the user; empty when there is no file of
 * that name, or a regular one. Symbolic links are followed. Saving renames a new file to the old name: a device, FIFO
 * or socket of that name would be lost for all processes that use it.
 */
HOST_EXPORT QString obstacleToReplacing(const QString &path);
