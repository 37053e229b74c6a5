#include "core/sources/JukoraControl.h"

#include "core/platform/Clock.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"

namespace {
double gTerminatedAt = 0.0;
const QString kSongInterface = QStringLiteral("com.morvane.Jukora.DJItem");
} // namespace

JukoraControl::JukoraControl(Workspace& workspace, DistributedNotificationCenter& center,
                             QObject* parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_center(center)
    , m_app(QLatin1String(jukora::kBusName), QStringLiteral("/"),
            QStringLiteral("com.morvane.Jukora.Application"))
{
    const QString id = QLatin1String(jukora::kBusName);
    connect(&m_workspace, &Workspace::didLaunchApplication, this, [this, id](const QString& app) {
        if (app == id)
            _appLifeChanged(true);
    });
    connect(&m_workspace, &Workspace::didTerminateApplication, this,
            [this, id](const QString& app) {
                if (app == id) {
                    _appLifeChanged(false);
                    gTerminatedAt = platform::now();
                }
            });
    m_observations[0] =
        m_center.observe(QStringLiteral("com.morvane.Jukora.songchanged"), id,
                         [this](const QString&, const QString&, const QVariantMap&) {
                             m_cachedItem = item();
                             m_callbacks.sendSongChanged();
                         });
    m_observations[1] = m_center.observe(
        QStringLiteral("com.morvane.Jukora.willTerminate"), id,
        [this](const QString&, const QString&, const QVariantMap&) { _appLifeChanged(false); });
}

void JukoraControl::setCallBack(QObject* target, const QByteArray& songChanged,
                                const QByteArray& appStateChanged)
{
    m_callbacks.set(target, songChanged, appStateChanged);
    _appLifeChanged(Workspace::isRunning(QLatin1String(jukora::kBusName)));
}

std::optional<jukora::DJItem> JukoraControl::item() const
{
    if (!m_appAlive)
        return std::nullopt;
    const ScriptingObject song = m_app.objectProperty("song", kSongInterface);
    if (song.isNull())
        return std::nullopt;
    jukora::DJItem djItem(song);
    if (djItem.title().isEmpty() || djItem.artist().isEmpty())
        return std::nullopt;
    return djItem;
}

float JukoraControl::location() const
{
    if (!m_appAlive)
        return 0.0f;
    return static_cast<float>(m_app.doubleProperty("location") + double(kPositionLead));
}

void JukoraControl::_appLifeChanged(bool alive)
{
    std::lock_guard lock(m_lock);
    m_appAlive = alive;
    m_callbacks.sendAppStateChanged();
}
