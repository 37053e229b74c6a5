#include "support/TempHome.h"

#include <QFile>
#include <QStringList>

#include <mutex>

TempHome::TempHome() = default;

QString TempHome::write(const QString& name, const QByteArray& bytes) const
{
    const QString path = filePath(name);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
    return path;
}

namespace {
const char* const kUserVariables[] = {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"};
}

ScopedUserFolders::ScopedUserFolders(const TempHome& home)
    : m_root(home.path())
{
    for (int i = 0; i < 3; ++i)
        m_saved[i] = qgetenv(kUserVariables[i]);
    qputenv("HOME", m_root.toUtf8());
    qputenv("XDG_CONFIG_HOME", configHome().toUtf8());
    qputenv("XDG_DATA_HOME", dataHome().toUtf8());
}

ScopedUserFolders::~ScopedUserFolders()
{
    for (int i = 0; i < 3; ++i)
        qputenv(kUserVariables[i], m_saved[i]);
}

QString ScopedUserFolders::dataHome() const
{
    return m_root + QStringLiteral("/data");
}

QString ScopedUserFolders::configHome() const
{
    return m_root + QStringLiteral("/config");
}

namespace {
std::mutex gMutex;
QStringList gLines;
QtMessageHandler gPrevious = nullptr;

void capture(QtMsgType, const QMessageLogContext&, const QString& message)
{
    std::lock_guard lock(gMutex);
    gLines.append(message);
}
} // namespace

MessageCapture::MessageCapture()
{
    std::lock_guard lock(gMutex);
    gLines.clear();
    gPrevious = qInstallMessageHandler(capture);
}

MessageCapture::~MessageCapture()
{
    qInstallMessageHandler(gPrevious);
}

QStringList MessageCapture::lines() const
{
    std::lock_guard lock(gMutex);
    return gLines;
}
