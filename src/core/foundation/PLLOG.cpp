#include "core/foundation/PLLOG.h"

#include "core/foundation/Assertion.h"

#include <QFileInfo>
#include <QMap>
#include <QStringList>

#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace {

struct EnvRecord {
    QString name;
    bool enabled = true;
};

struct LogState {
    std::mutex mutex;
    QMap<std::uint32_t, EnvRecord> envs;
    bool enabled = true;
    int style = 1;

    void reset()
    {
        envs = {{PLLOG::Info, {QStringLiteral("Info")}},
                {PLLOG::Warning, {QStringLiteral("Warning")}},
                {PLLOG::Error, {QStringLiteral("Error")}},
                {PLLOG::Net, {QStringLiteral("Net")}},
                {PLLOG::Mem, {QStringLiteral("Mem")}}};
        enabled = true;
        style = 1;
    }
};

LogState& state()
{
    static LogState* s = [] {
        auto* st = new LogState; // intentionally immortal: logging may run during exit
        st->reset();
        return st;
    }();
    return *s;
}

QString unknownEnv(std::uint32_t env)
{
    return QString::asprintf("PLOG env %d not exists", static_cast<int>(env));
}

} // namespace

void PLLOG::addEnv(std::uint32_t env, const QString& name)
{
    auto& s = state();
    std::lock_guard lock(s.mutex);
    s.envs.insert(env, EnvRecord{name, true});
}

void PLLOG::setLogState(std::uint32_t env, bool enabled)
{
    auto& s = state();
    std::unique_lock lock(s.mutex);
    if (env == GlobalSwitch) {
        s.enabled = enabled;
        return;
    }
    auto it = s.envs.find(env);
    if (it == s.envs.end()) {
        lock.unlock();
        foundation::assertionFailure(unknownEnv(env));
        return;
    }
    it->enabled = enabled;
}

void PLLOG::setLogStyle(int style)
{
    auto& s = state();
    std::lock_guard lock(s.mutex);
    s.style = style;
}

int PLLOG::logStyle()
{
    auto& s = state();
    std::lock_guard lock(s.mutex);
    return s.style;
}

void PLLOG::resetToDefaults()
{
    auto& s = state();
    std::lock_guard lock(s.mutex);
    s.reset();
}

QString PLLOG::formatLine(std::uint32_t env, const char* file, int line, const char* method,
                          const QString& message, bool fileForm)
{
    auto& s = state();
    QString name;
    int style = 0;
    {
        std::unique_lock lock(s.mutex);
        if (!s.enabled)
            return {};
        auto it = s.envs.constFind(env);
        if (it == s.envs.constEnd()) {
            lock.unlock();
            foundation::assertionFailure(unknownEnv(env));
            return {};
        }
        if (!it->enabled)
            return {};
        name = it->name;
        style = s.style;
    }
    const QString methodName = QString::fromUtf8(method ? method : "");
    switch (style) {
    case 0:
        return QStringLiteral("[%1] %2").arg(name, message);
    case 1:
        return QStringLiteral("[%1] %2\n  %3").arg(name, message, methodName);
    case 2: {
        const QString fileName = QFileInfo(QString::fromUtf8(file ? file : "")).fileName();
        QString text = QStringLiteral("[%1]%2:%3 %4 %5")
                           .arg(name, fileName, QString::number(line), methodName, message);
        if (fileForm)
            text += QLatin1Char('\n');
        return text;
    }
    default:
        return {};
    }
}

void PLLOG::logMessage(std::uint32_t env, const char* file, int line, const char* method,
                       const QString& message)
{
    const QString text = formatLine(env, file, line, method, message, false);
    if (text.isNull())
        return;
    std::puts(text.toUtf8().constData());
    std::fflush(stdout);
}

void PLLOG::logForEnv(std::uint32_t env, const char* file, int line, const char* method,
                      const char* format, ...)
{
    va_list ap;
    va_start(ap, format);
    const QString message = QString::vasprintf(format, ap);
    va_end(ap);
    logMessage(env, file, line, method, message);
}

void PLLOG::configForEnv(std::uint32_t /*env*/, const QString& key, bool enable)
{
    configFormatKey(key, enable);
}

void PLLOG::configFormatKey(const QString& /*key*/, bool /*enable*/) {}

void PLLOG::configFormatByKeys(const QStringList& /*keys*/) {}
