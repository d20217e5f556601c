#pragma once

#include "setup/Scene.h"

#include <QJsonObject>
#include <QStringList>

class FieldReader;

/// How what a container shows is described in a set-up.
namespace ContainerFields
{

/// The keys of modules that sources may name.
struct Keys
{
    QStringList all;
    QStringList takenOut; ///< those of modules that are not plugged in, whose values are offered nowhere
};

/// The names of the fields of an entry of the list "containers".
QStringList names();
/// Those of them that may stand in the scene itself when there is but one container.
QStringList namesInScene();

/// Reads the fields of namesInScene(); \a place is that of \a object.
SceneContainer read(FieldReader &reader, const QJsonObject &object, const QString &place, const Keys &keys);
/// Reads an entry of the list: all fields of names(), and no other.
SceneContainer readListed(FieldReader &reader, const QJsonObject &object, const QString &place, const Keys &keys);

/// What readListed() reads as \a container.
QJsonObject write(const SceneContainer &container);

} // namespace ContainerFields
