#pragma once

#include <QString>

// Where the application finds its own resources and the user's folders on Linux.
namespace foundation {

// <dir of the running program>/../share/versewick/<name>: works installed (<prefix>/bin) and
// in the build tree (build/bin beside build/share/versewick).
QString resourcePath(const QString& name);
// The user's library folder, the first generic data location (~/.local/share); the
// application's data folder lies in it.
QString userLibraryPath();
// Copies a file or a folder tree; false when anything could not be copied.
bool copyRecursively(const QString& from, const QString& to);
// Removes a file, a link (never what it points to) or a folder tree.
bool removeRecursively(const QString& path);

} // namespace foundation
