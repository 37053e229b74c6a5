#include "foundation/PLLOG_File.h"

#include "foundation/PLLOG.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>

namespace {
std::atomic<PLLOG_File*> gDefaultLogger{nullptr};
}

PLLOG_File::~PLLOG_File()
{
    PLLOG_File* self = this;
    gDefaultLogger.compare_exchange_strong(self, nullptr);
}

std::unique_ptr<PLLOG_File> PLLOG_File::fileLog(const QString& path)
{
    std::unique_ptr<PLLOG_File> logger(new PLLOG_File);
    logger->m_file.setFileName(path);
    // Truncate: every logger starts a fresh file.
    if (!logger->m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return nullptr;
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
