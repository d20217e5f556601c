#pragma once

#include "host/HostExport.h"

#include <QString>

/**
 * Why a file of the name \a path must not be replaced by a saved one; empty when it may be: there is none, or a regular
 * one. A link counts as what it leads to. Saving puts a new file in the place of the old one, so that a device, FIFO or
 * socket would be gone for everyone.
 */
HOST_EXPORT QString obstacleToReplacing(const QString &path);
