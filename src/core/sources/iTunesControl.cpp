#include "core/sources/iTunesControl.h"

#include "core/platform/Clock.h"
#include "core/platform/DistributedNotificationCenter.h"
#include "core/platform/Workspace.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QRegularExpression>

#include <cmath>

double iTunesControl::s_terminatedAt = 0.0;

iTunesControl& iTunesControl::sharedInstance()
{
    static iTunesControl* instance =
        new iTunesControl(Workspace::sharedWorkspace(),
                          DistributedNotificationCenter::defaultCenter()); // process-long
    return *instance;
}

iTunesControl::iTunesControl(Workspace& workspace, DistributedNotificationCenter& center,
                             QObject* parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_center(center)
{
    m_observations[0] =
        m_center.observe(QLatin1String(kPlayerInfoNotification), QLatin1String(kPlayerSender),
                         [this](const QString&, const QString&, const QVariantMap& info) {
                             _notifyTrackDidChanged(info);
                         });
    connect(&m_workspace, &Workspace::willLaunchApplication, this, &iTunesControl::onWillLaunch);
    connect(&m_workspace, &Workspace::didLaunchApplication, this, &iTunesControl::onDidLaunch);
    connect(&m_workspace, &Workspace::didTerminateApplication, this,
            &iTunesControl::onDidTerminate);
    m_observations[1] =
        m_center.observe(QLatin1String(kShutdownNotification), QLatin1String(kPlayerSender),
                         [this](const QString&, const QString&, const QVariantMap&) {
                             Q_EMIT shutdownRequested();
                             QCoreApplication::quit();
                         });
    _appLifeChanged(m_app.isRunning());
}

int iTunesControl::compareVersions(const QString& a, const QString& b)
{
    static const QRegularExpression digits(QStringLiteral("\\d+"));
    auto numbers = [](const QString& v) {
        QList<qulonglong> out;
        for (auto it = digits.globalMatch(v); it.hasNext();)
            out << it.next().captured().left(18).toULongLong();
        return out;
    };
    const auto x = numbers(a), y = numbers(b);
    for (qsizetype i = 0; i < std::max(x.size(), y.size()); ++i) {
        const qulonglong p = x.value(i), q = y.value(i);
        if (p != q)
            return p < q ? -1 : 1;
    }
    return 0;
}

std::optional<itunes::Track> iTunesControl::currentTrack() const
{
    if (!m_app.isRunning())
        return std::nullopt;
    return m_app.currentTrack();
}

bool iTunesControl::isPlaying() const
{
    return m_app.isRunning() && m_app.playerState() == itunes::kPlaying;
}

float iTunesControl::playerPosition() const
{
    if (!m_app.isRunning())
        return 0.0f;
    const std::optional<double> raw = m_app.playerPosition();
    if (!raw)
        return 0.0f;
    // A version that could not be read yet is read again: until it is known the width stays.
    if (!m_versionKnown)
        readVersion();
    // Before 11.0.3 the position is a whole number of seconds; it is read as an integer then,
    // whatever the player sent.
    const double seconds = m_versionGreate1103 ? *raw : std::trunc(*raw);
    return static_cast<float>(seconds + double(kPositionLead));
}

void iTunesControl::playPrevious() const
{
    if (m_app.isRunning())
        m_app.backTrack();
}

void iTunesControl::playNext() const
{
    if (m_app.isRunning())
        m_app.nextTrack();
}

void iTunesControl::launchItunesApp() const
{
    QDBusMessage start = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("StartServiceByName"));
    start << QLatin1String(itunes::kBusName) << 0u;
    // The answer (started, already running, or no such service) is not waited for.
    QDBusConnection::sessionBus().send(start);
}

void iTunesControl::updateAppLifeState()
{
    _appLifeChanged(m_app.isRunning());
}

void iTunesControl::readVersion() const
{
    // The name may appear before the scripting object answers: an unreadable version is not
    // an old one, and it keeps the previous width until a read succeeds.
    const QString version = m_app.version();
    m_versionKnown = !version.trimmed().isEmpty();
    if (m_versionKnown)
        m_versionGreate1103 = compareVersions(version, QStringLiteral("11.0.3")) >= 0;
}

void iTunesControl::_appLifeChanged(bool alive)
{
    if (alive)
        readVersion();
    if (m_delegate && m_delegate->respondsToAppLifeCycleChanged())
        m_delegate->iTunesCB_AppLifeCycleChanged(alive);
}

void iTunesControl::_notifyTrackDidChanged(const QVariantMap& userInfo)
{
    std::optional<itunes::Track> track;
    // A value of another type is not a state.
    const QString state = ScriptingObject::toString(userInfo.value(QStringLiteral("Player State")));
    if (state != QLatin1String("Stopped"))
        track = currentTrack();
    if (m_delegate && m_delegate->respondsToTrackDidChange())
        m_delegate->iTunesCB_TrackDidChange(track);
}

void iTunesControl::onWillLaunch(const QString& id)
{
    if (id != QLatin1String(itunes::kBusName))
        return;
    // Started again right after quitting (a late scripting request relaunches it): close it.
    if (std::fabs(platform::now() - s_terminatedAt) < kRelaunchGuardSeconds) {
        m_app.quit();
        m_rejectLaunch = true;
        _appLifeChanged(false);
    }
}

void iTunesControl::onDidLaunch(const QString& id)
{
    if (id != QLatin1String(itunes::kBusName))
        return;
    // The guard closed this launch; it is not reported as started.
    if (std::exchange(m_rejectLaunch, false))
        return;
    _appLifeChanged(true);
}

void iTunesControl::onDidTerminate(const QString& id)
{
    if (id != QLatin1String(itunes::kBusName))
        return;
    _appLifeChanged(false);
    s_terminatedAt = platform::now();
}
