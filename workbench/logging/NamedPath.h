#pragma once

#include <QString>

/// The absolute path of a file or folder that exists and is named in \a text; empty when there is none.
QString namedPath(const QString &text);
