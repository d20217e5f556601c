#pragma once

#include <QString>

/// Why nothing can be written to the file at \a path, be it there or not; empty when nothing is known against it.
QString writeObstacle(const QString &path);
