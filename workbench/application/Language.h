#pragma once

#include <QString>
#include <QStringList>

/// The languages of the workbench, of the substitute host, and of those plugins that bring translations along.
namespace Language
{

/// The supported codes: "de" and "en".
QStringList codes();

/// The first of codes() in the system's list of UI languages; "en" when none of them is in it.
QString ofSystem();

/**
 * Has texts given in the language \a code from now on, where a translation is there; "en" is what they are written in.
 * Numbers follow, unless the system's locale is of that language: then they are as there. Qt's own texts follow if its
 * translations are installed. Needs the application object, and ends with it.
 */
void use(const QString &code);

/// The code that use() was last called with; "en" before.
QString current();

/**
 * Has the texts of the plugin file at \a path given in the current() language from now on, if there is a translation
 * beside it: for `NAME.so` that is `translations/NAME_de.qm`. To be called before the plugin makes its first window.
 */
void useForPlugin(const QString &path);

} // namespace Language
