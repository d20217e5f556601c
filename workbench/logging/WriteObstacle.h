#pragma once

#include <QString>

/**
 * Why the file at \a path, which may not exist yet, cannot be written; empty when no reason is known.
 *
 * Never blocks: a pipe without a reader is an obstacle. To find that out the pipe is opened and closed.
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
