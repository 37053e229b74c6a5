#include "core/foundation/RegularFile.h"

#include "core/foundation/SystemLog.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace foundation {

FileDescriptor::~FileDescriptor()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept
{
    if (this != &other) {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = other.release();
    }
    return *this;
}

int FileDescriptor::release()
{
    const int fd = m_fd;
    m_fd = -1;
    return fd;
}

namespace {

QString kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return QStringLiteral("a folder");
    if (S_ISFIFO(mode))
        return QStringLiteral("a pipe");
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return QStringLiteral("a device");
    if (S_ISSOCK(mode))
        return QStringLiteral("a socket");
    return QStringLiteral("not a regular file");
}

QString errorText(int error)
{
    if (error == ENOENT)
        return QStringLiteral("missing");
    if (error == ELOOP)
        return QStringLiteral("a link");
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

OpenedFile openRegularFile(const QString& path, qint64 maxBytes, bool followLinks)
{
    OpenedFile out;
    if (path.isEmpty()) {
        out.reason = errorText(ENOENT);
        out.missing = true;
        return out;
    }
    // O_NONBLOCK: opening a pipe must not wait for a writer; it is refused just below, on the
    // descriptor itself, so nothing can be swapped in between.
    const int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | (followLinks ? 0 : O_NOFOLLOW);
    FileDescriptor fd(::open(QFile::encodeName(path).constData(), flags));
    if (!fd.isOpen()) {
        out.missing = errno == ENOENT;
        out.reason = errorText(errno);
        return out;
    }
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0) {
        out.reason = errorText(errno);
        return out;
    }
    if (!S_ISREG(st.st_mode)) {
        out.reason = kindOf(st.st_mode);
        return out;
    }
    if (st.st_size > maxBytes) {
        out.reason = QStringLiteral("%1 bytes, more than %2").arg(st.st_size).arg(maxBytes);
        return out;
    }
    // Regular files never block; reads go back to blocking mode.
    ::fcntl(fd.get(), F_SETFL, ::fcntl(fd.get(), F_GETFL) & ~O_NONBLOCK);
    out.fd = std::move(fd);
    out.size = st.st_size;
    return out;
}

FileRead readRegularFile(const QString& path, qint64 maxBytes, bool followLinks)
{
    OpenedFile file = openRegularFile(path, maxBytes, followLinks);
    if (!file.fd.isOpen())
        return {std::nullopt, file.reason, file.missing};
    QByteArray bytes;
    bytes.reserve(file.size);
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(file.fd.get(), buffer, sizeof buffer);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return {std::nullopt, errorText(errno)};
        if (n == 0)
            return {bytes, {}};
        if (bytes.size() + n > maxBytes)
            return {std::nullopt, QStringLiteral("grew past %1 bytes").arg(maxBytes)};
        bytes.append(buffer, n);
    }
}

std::optional<QByteArray> readLyricFile(const QString& what, const QString& path, qint64 maxBytes,
                                        bool followLinks)
{
    FileRead read = readRegularFile(path, maxBytes, followLinks);
    if (!read.bytes && !read.missing)
        systemLog(QStringLiteral("%1 %2 is not read: %3").arg(what, path, read.reason));
    return std::move(read.bytes);
}

} // namespace foundation
