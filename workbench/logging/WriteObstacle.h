#pragma once

#include <QString>

/**
 * Why nothing can be written to the file at \a path, be it there or not; empty when nothing is known against it.
 *
 * Never waits: a pipe that nobody reads from is an obstacle. To find that out it is opened for a moment.
 */
QString writeObstacle(const QString &path);

/**
 * Why no new file can take the place of what is at \a path; empty when nothing is known against it.
 *
 * As writeObstacle(), and only a regular file or a link to one may be replaced: a device or a pipe would be gone.
 */
QString replaceObstacle(const QString &path);

/// Whether both paths lead to one file, also through links and when it does not exist yet.
bool isSameFile(const QString &one, const QString &other);
