#pragma once

#include <QString>
#include <QStringList>

/// The set-ups that were opened or saved last, in the settings.
namespace RecentFiles
{

constexpr int maximumCount = 10;

/// Absolute paths, the last one first; the files need not exist any more.
QStringList paths();

/// Puts \a path in front.
void add(const QString &path);
void remove(const QString &path);
void clear();

} // namespace RecentFiles
