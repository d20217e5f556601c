#pragma once

#include "setup/Scene.h"

#include <QByteArray>
#include <QString>

/**
 * \a scene as JSON text, ended by a line feed: every field, in text order, so that equal scenes give equal texts.
 * readScene() makes the same scene of it.
 */
QByteArray sceneText(const Scene &scene);

/**
 * Writes \a scene to the file at \a path, which is replaced as a whole or left as it was.
 * \return an empty text, or one line that names the file and says what went wrong
 */
QString writeSceneFile(const Scene &scene, const QString &path);
