#pragma once

#include <QString>

#include <cstdint>

// Logging with numbered environments (channels), a global switch and three line styles.
// The state is process-wide and guarded by a mutex, so any thread may log.
class PLLOG {
public:
    enum Env : std::uint32_t { Info = 0, Warning = 1, Error = 2, Net = 3, Mem = 4 };
    // Passing this number to setLogState switches the global enable flag.
    static constexpr std::uint32_t GlobalSwitch = 871015;

    static void addEnv(std::uint32_t env, const QString& name);
    static void setLogState(std::uint32_t env, bool enabled);
    static void setLogStyle(int style);
    static int logStyle();

    // printf-style format (UTF-8); %s arguments are UTF-8 C strings.
    static void logForEnv(std::uint32_t env, const char* file, int line, const char* method,
                          const char* format, ...) __attribute__((format(printf, 5, 6)));
    static void logMessage(std::uint32_t env, const char* file, int line, const char* method,
                           const QString& message);

    // Per-key format configuration is accepted and ignored.
    static void configForEnv(std::uint32_t env, const QString& key, bool enable);
    static void configFormatKey(const QString& key, bool enable);
    static void configFormatByKeys(const QStringList& keys);

    // Steps shared with file loggers: the line for a call, or a null string when nothing is
    // to be written (logging off, environment off or unknown, undefined style).
    // fileForm selects the file variant of style 2, which ends with a line feed.
    static QString formatLine(std::uint32_t env, const char* file, int line, const char* method,
                              const QString& message, bool fileForm);

    // Restores the five predefined environments, style 1 and the global switch (tests).
    static void resetToDefaults();
};

#define PL_LOG(env, format, ...)                                                                   \
    PLLOG::logForEnv((env), __FILE__, __LINE__, __func__, format __VA_OPT__(, ) __VA_ARGS__)
#define PL_LOG_INFO(format, ...) PL_LOG(PLLOG::Info, format __VA_OPT__(, ) __VA_ARGS__)
#define PL_LOG_WARNING(format, ...) PL_LOG(PLLOG::Warning, format __VA_OPT__(, ) __VA_ARGS__)
#define PL_LOG_ERROR(format, ...) PL_LOG(PLLOG::Error, format __VA_OPT__(, ) __VA_ARGS__)
