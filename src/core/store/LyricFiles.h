#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// File access for the lyrics folder. Only regular files are lyrics: links are never followed
// and pipes, sockets and devices are never opened in a way that could block.
namespace lyricfiles {

// What the folder holds under a name, seen without following a link.
enum class Entry { Missing, RegularFile, Other };
Entry entryAt(const QString& path);

// The bytes of the regular file at path; nullopt when it is missing, is anything but a
// regular file (a link to one included), cannot be read, or is larger than maxSize.
std::optional<QByteArray> readRegularFile(const QString& path, qint64 maxSize);

// Writes bytes to a new file in path's folder and renames it over path: a crash leaves the
// old file or the new one. The rename replaces a link itself, never what it points to.
bool replaceFile(const QString& path, const QByteArray& bytes);

} // namespace lyricfiles
