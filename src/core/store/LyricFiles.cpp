#include "core/store/LyricFiles.h"

#include "core/foundation/RegularFile.h"

#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lyricfiles {

namespace {

// Closes a descriptor when it goes out of scope.
class Descriptor {
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    {
    }
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_fd; }
    // Closes now and reports whether the data reached the file.
    bool close()
    {
        const int fd = m_fd;
        m_fd = -1;
        return ::close(fd) == 0;
    }

private:
    int m_fd;
};

bool writeAll(int fd, const QByteArray& bytes)
{
    const char* data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, data, size_t(left));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        data += n;
        left -= n;
    }
    return true;
}

} // namespace

Entry entryAt(const QString& path)
{
    struct stat st {};
    if (::lstat(QFile::encodeName(path).constData(), &st) != 0)
        return errno == ENOENT ? Entry::Missing : Entry::Other;
    return S_ISREG(st.st_mode) ? Entry::RegularFile : Entry::Other;
}

std::optional<QByteArray> readRegularFile(const QString& path, qint64 maxSize)
{
    return foundation::readLyricFile(QStringLiteral("The lyric file"), path, maxSize, false);
}

bool replaceFile(const QString& path, const QByteArray& bytes)
{
    static std::atomic<unsigned> counter{0};
    // A name of its own, not derived from the target's, so that a target name of the
    // longest allowed length still has a temporary file beside it.
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    const QByteArray target = QFile::encodeName(path);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QByteArray temporary = folder + "/.versewick-" + QByteArray::number(getpid()) + '-' +
                                     QByteArray::number(counter++) + ".tmp";
        Descriptor fd(::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (fd.get() < 0 && errno == EEXIST)
            continue;
        if (fd.get() < 0)
            return false;
        const bool written = writeAll(fd.get(), bytes) && ::fsync(fd.get()) == 0;
        if (!fd.close() || !written || ::rename(temporary.constData(), target.constData()) != 0) {
            ::unlink(temporary.constData());
            return false;
        }
        return true;
    }
    return false;
}

} // namespace lyricfiles
