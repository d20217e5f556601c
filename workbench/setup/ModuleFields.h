#pragma once

#include "modules/ModuleSettings.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

class FieldReader;

/// How the modules of one family are described in a set-up. The fields "key" and "pluggedIn" are those of all families.
struct ModuleFields
{
    QStringList kinds; ///< the texts of "kind"; no two families share one
    QStringList names; ///< of all fields that the family has besides "kind"
    /// Reads the fields, "kind" among them; \a place is that of \a object.
    decltype(ModuleSettings::family) (*read)(FieldReader &reader, const QJsonObject &object, const QString &place);
    /// The fields that read() makes the same settings of, "kind" among them; empty for settings of another family.
    QJsonObject (*write)(const ModuleSettings &settings);
};

/// All families; devices have two entries, one per kind of line. A further one is added in ModuleFields.cpp.
const std::vector<ModuleFields> &moduleFields();

/// Reads one module. \a isPluggedIn gets whether it is.
ModuleSettings readModule(FieldReader &reader, const QJsonObject &object, const QString &place, bool &isPluggedIn);

/// What readModule() reads as \a settings.
QJsonObject writeModule(const ModuleSettings &settings, bool isPluggedIn);
