#pragma once

#include "setup/Scene.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// A scene, or what is wrong with it.
struct SceneResult
{
    Scene scene;        ///< whole only without errors
    QString error;      ///< the first of errors; empty when there is none
    QStringList errors; ///< one line each, that names file and place and what is expected there
};

/// Reads a scene from JSON text; \a fileName is how errors call it.
SceneResult readScene(const QByteArray &json, const QString &fileName);

/// Reads the file at \a path, of up to 1 MiB, which may be a resource path. Does not wait for the writer of a pipe.
SceneResult readSceneFile(const QString &path);

/// The names of the scenes inside the program, in text order.
QStringList shippedScenes();

/// Resource path of the shipped scene called \a name; which need not exist.
QString shippedScenePath(const QString &name);

/// Resource path of the modules that a workbench without a scene begins with: a scene without curves.
QString startScenePath();
