#pragma once

class QString;

/// Opens files and folders with the programs that the desktop has for them. Null texts and what is gone are ignored.
namespace OpenedPath
{

void open(const QString &path);
/// The folder that the file at \a path is in; of a folder itself.
void openFolder(const QString &path);

} // namespace OpenedPath
