#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Reading files that any process of the user may have planted: only regular files are read,
// and nothing here can block on a pipe or a device or fill memory with a huge file. Safe to
// call from any thread at once (no shared state).
namespace foundation {

// The largest lyric text taken from a file or from another program: far above any real lyric.
inline constexpr qint64 kMaxLyricBytes = 4 * 1024 * 1024;

struct FileRead {
    std::optional<QByteArray> bytes; // nullopt when refused or unreadable
    QString reason;                  // why not, when bytes is nullopt ("a pipe" and so on)
    bool missing = false;            // nothing at all under the name
};

// An open descriptor that closes itself; release() hands it over.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd = -1)
        : m_fd(fd)
    {
    }
    ~FileDescriptor();
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_fd(other.release())
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return m_fd; }
    bool isOpen() const { return m_fd >= 0; }
    int release();

private:
    int m_fd;
};

struct OpenedFile {
    FileDescriptor fd; // not open when refused
    qint64 size = 0;
    QString reason;
    bool missing = false;
};

// Opens path for reading without waiting (O_NONBLOCK) and keeps it only when the open
// descriptor is a regular file of at most maxBytes. followLinks=false refuses a link itself.
OpenedFile openRegularFile(const QString& path, qint64 maxBytes, bool followLinks = true);

// The bytes of the regular file at path, at most maxBytes (also when it grows while read).
FileRead readRegularFile(const QString& path, qint64 maxBytes, bool followLinks = true);

// The same, and one line in the log when an existing entry is refused (a missing file is not
// worth a line): "<what> <path> is not read: <reason>".
std::optional<QByteArray> readLyricFile(const QString& what, const QString& path,
                                        qint64 maxBytes = kMaxLyricBytes, bool followLinks = true);

} // namespace foundation
