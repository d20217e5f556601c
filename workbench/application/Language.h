#pragma once

#include <QString>
#include <QStringList>

/// The languages of the workbench's own texts. Texts of containers are not concerned.
namespace Language
{

/// The supported codes: "de" and "en".
QStringList codes();

/// The first of codes() in the system's list of UI languages; "en" when none of them is in it.
QString ofSystem();

/**
 * Has texts given in the language \a code from now on, where a translation is there; "en" is what they are written in.
 * Qt's own texts follow if its translations are installed. Needs the application object, and ends with it.
 */
void use(const QString &code);

} // namespace Language
