#include "core/foundation/PLLOG_File.h"

#include "core/foundation/PLLOG.h"

#include <QFile>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {
std::atomic<PLLOG_File*> gDefaultLogger{nullptr};

// Creates a new, empty file and renames it over path, so that a logger still writing to an
// earlier file at that path keeps its own file instead of writing into the new one. Answers
// the open descriptor, or -1.
int createFreshFile(const QString& path)
{
    static std::atomic<unsigned> counter{0};
    const QByteArray target = QFile::encodeName(path);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QByteArray temporary =
            target + ".new-" + QByteArray::number(getpid()) + '-' + QByteArray::number(counter++);
        const int fd =
            ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0666);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return -1;
        if (::rename(temporary.constData(), target.constData()) != 0) {
            ::unlink(temporary.constData());
            ::close(fd);
            return -1;
        }
        return fd;
    }
    return -1;
}
} // namespace

PLLOG_File::~PLLOG_File()
{
    PLLOG_File* self = this;
    gDefaultLogger.compare_exchange_strong(self, nullptr);
}

std::unique_ptr<PLLOG_File> PLLOG_File::fileLog(const QString& path)
{
    const int fd = createFreshFile(path);
    if (fd < 0)
        return nullptr;
    std::unique_ptr<PLLOG_File> logger(new PLLOG_File);
    if (!logger->m_file.open(fd, QIODevice::WriteOnly | QIODevice::Append,
                             QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return nullptr;
    }
    return logger;
}

std::unique_ptr<PLLOG_File> PLLOG_File::createDefaultLogger(const QString& path)
{
    auto logger = fileLog(path);
    setDefaultLogger(logger.get());
    return logger;
}

void PLLOG_File::setDefaultLogger(PLLOG_File* logger)
{
    gDefaultLogger.store(logger);
}

PLLOG_File* PLLOG_File::defaultLogger()
{
    return gDefaultLogger.load();
}

void PLLOG_File::logMessage(std::uint32_t env, const char* file, int line, const char* method,
                            const QString& message)
{
    const QString text = PLLOG::formatLine(env, file, line, method, message, true);
    if (text.isNull())
        return;
    const QByteArray bytes = text.toUtf8();
    if (m_isConsoleVisible) {
        std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
        std::fflush(stdout);
    }
    m_file.write(bytes);
    m_file.flush();
}

void PLLOG_File::logForEnv(std::uint32_t env, const char* file, int line, const char* method,
                           const char* format, ...)
{
    va_list ap;
    va_start(ap, format);
    const QString message = QString::vasprintf(format, ap);
    va_end(ap);
    logMessage(env, file, line, method, message);
}
