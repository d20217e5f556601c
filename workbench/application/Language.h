#pragma once

#include <QString>
#include <QStringList>

/// The languages of the workbench's own texts. What a container says is the container's matter.
namespace Language
{

/// The codes that can be asked for: "de" and "en".
QStringList codes();

/// The first of codes() that the system asks for; "en" when it asks for none of them.
QString ofSystem();

/**
 * Has texts given in the language \a code from now on, where a translation is there; "en" is what they are written in.
 * Qt's own texts follow if its translations are installed. Needs the application object, and ends with it.
 */
void use(const QString &code);

} // namespace Language
