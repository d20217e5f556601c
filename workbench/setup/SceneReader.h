#pragma once

#include "setup/Scene.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A scene, or one line that names file and place and what is expected there; \c error is empty when there is none.
struct SceneResult
{
    Scene scene;
    QString error;
};

/// Reads a scene from JSON text; \a fileName is how errors call it.
SceneResult readScene(const QByteArray &json, const QString &fileName);

/// Reads the scene file at \a path, which may be a resource path.
SceneResult readSceneFile(const QString &path);

/// The names of the scenes inside the program, in text order.
QStringList shippedScenes();

/// Resource path of the shipped scene called \a name; which need not exist.
QString shippedScenePath(const QString &name);

/// Resource path of the modules that a workbench without a scene begins with: a scene without curves.
QString startScenePath();
