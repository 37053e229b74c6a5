#pragma once

#include <QFile>
#include <QString>

#include <cstdint>
#include <memory>

// A logger that appends the lines of PLLOG's environments to a file and, while console
// output is visible, echoes them to standard output. Each logger starts a fresh file.
class PLLOG_File {
public:
    ~PLLOG_File();
    PLLOG_File(const PLLOG_File&) = delete;
    PLLOG_File& operator=(const PLLOG_File&) = delete;

    // Starts a new, empty file at path (an earlier file there is replaced, not emptied: a
    // logger still open on it goes on writing to it alone); nullptr when it cannot be made.
    static std::unique_ptr<PLLOG_File> fileLog(const QString& path);
    // Creates a logger and makes it the default one. The caller owns it; the default is a
    // non-owning reference that is cleared when that logger is destroyed.
    static std::unique_ptr<PLLOG_File> createDefaultLogger(const QString& path);
    static void setDefaultLogger(PLLOG_File* logger);
    static PLLOG_File* defaultLogger();

    void setConsoleVisible(bool visible) { m_isConsoleVisible = visible; }
    bool isConsoleVisible() const { return m_isConsoleVisible; }

    void logForEnv(std::uint32_t env, const char* file, int line, const char* method,
                   const char* format, ...) __attribute__((format(printf, 6, 7)));
    void logMessage(std::uint32_t env, const char* file, int line, const char* method,
                    const QString& message);

private:
    PLLOG_File() = default;

    QFile m_file;
    bool m_isConsoleVisible = true;
};
