#include "core/sources/MusicSourceMpris.h"

#include "core/platform/Clock.h"
#include "core/platform/Workspace.h"
#include "core/settings/PLSettingsStore.h"
#include "core/sources/MprisPlayerTracker.h"
#include "core/sources/MprisValues.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QSettings>

namespace {
bool isPlayerName(const QString& name)
{
    return name.startsWith(QLatin1String(mpris::kBusPrefix)) &&
           name.size() > qsizetype(sizeof mpris::kBusPrefix - 1);
}
} // namespace

MusicSourceMpris::MusicSourceMpris(Workspace& workspace, QObject* parent)
    : QObject(parent)
    , m_workspace(workspace)
{
    const auto settings = PLSettingsStore::defaultSettings();
    m_ignored = ignoredPlayersIn(*settings);
    init();
}

MusicSourceMpris::MusicSourceMpris(Workspace& workspace, QSettings& settings, QObject* parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_ignored(ignoredPlayersIn(settings))
{
    init();
}

MusicSourceMpris::~MusicSourceMpris() = default;

void MusicSourceMpris::init()
{
    connect(&m_workspace, &Workspace::didLaunchApplication, this, [this](const QString& name) {
        if (isPlayerName(name))
            addPlayer(name);
    });
    connect(&m_workspace, &Workspace::didTerminateApplication, this,
            [this](const QString& name) { removePlayer(name); });
    // The players already on the bus, asked without waiting.
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    auto* watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, MprisPlayerTracker::kCallTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusMessage reply = w->reply();
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
            onNames(reply.arguments().constFirst().toStringList());
    });
}

QStringList MusicSourceMpris::ignoredPlayersIn(QSettings& settings)
{
    const QVariant value = settings.value(QLatin1String(kIgnoredPlayersKey));
    QStringList list = value.metaType() == QMetaType::fromType<QString>()
                           ? QStringList{value.toString()}
                           : value.toStringList();
    QStringList out;
    for (const QString& entry : list) {
        if (!entry.trimmed().isEmpty())
            out << entry.trimmed();
    }
    return out;
}

void MusicSourceMpris::setIgnoredPlayers(const QStringList& ignored)
{
    m_ignored = ignored;
    reevaluate();
}

bool MusicSourceMpris::isIgnored(const MprisPlayerTracker& player) const
{
    const QString suffix = player.suffix();
    for (const QString& entry : m_ignored) {
        if (suffix.compare(entry, Qt::CaseInsensitive) == 0 ||
            suffix.startsWith(entry + u'.', Qt::CaseInsensitive) ||
            (!player.identity().isEmpty() &&
             player.identity().compare(entry, Qt::CaseInsensitive) == 0))
            return true;
    }
    return false;
}

void MusicSourceMpris::onNames(const QStringList& names)
{
    for (const QString& name : names) {
        if (isPlayerName(name))
            addPlayer(name);
    }
}

void MusicSourceMpris::addPlayer(const QString& busName)
{
    if (m_players.count(busName))
        return;
    auto tracker = std::make_unique<MprisPlayerTracker>(busName);
    connect(tracker.get(), &MprisPlayerTracker::changed, this, &MusicSourceMpris::reevaluate);
    m_players.emplace(busName, std::move(tracker));
}

void MusicSourceMpris::removePlayer(const QString& busName)
{
    if (m_players.erase(busName))
        reevaluate();
}

MprisPlayerTracker* MusicSourceMpris::choose() const
{
    // Ordered by (status, the moment of that status); larger wins. A stopped player is
    // never followed.
    MprisPlayerTracker* best = nullptr;
    const auto rank = [](const MprisPlayerTracker* p) {
        return p->status() == MprisPlayerTracker::Playing ? std::pair{2, p->playingSince()}
                                                          : std::pair{1, p->pausedSince()};
    };
    for (const auto& [name, player] : m_players) {
        if (!player->isReady() || isIgnored(*player) ||
            player->status() == MprisPlayerTracker::Stopped)
            continue;
        if (!best || rank(player.get()) > rank(best))
            best = player.get();
    }
    return best;
}

void MusicSourceMpris::reevaluate()
{
    m_followed = choose();
    const bool running = m_followed != nullptr;
    if (running != m_running)
        _appLifeChanged(running);

    // The record follows every change (an album or length filled in later is no new song);
    // the callback only a new song.
    const MprisSong song = this->song();
    const bool hasSong = !song.isEmpty();
    const bool changed = hasSong != m_hasSong || song.isOtherSongThan(m_reportedSong);
    m_hasSong = hasSong;
    m_reportedSong = song;
    m_track->setTitle(song.title);
    m_track->setArtist(song.artist);
    m_track->setAlbum(song.album);
    m_track->setLength(qint64(song.lengthSeconds()));
    if (changed && m_running)
        m_callbacks.sendSongChanged();
}

void MusicSourceMpris::setCallBack(QObject* target, const QByteArray& songChanged,
                                   const QByteArray& appStateChanged)
{
    m_callbacks.set(target, songChanged, appStateChanged);
    _appLifeChanged(m_running);
}

void MusicSourceMpris::_appLifeChanged(bool alive)
{
    std::lock_guard lock(m_lock);
    m_running = alive;
    m_callbacks.sendAppStateChanged();
}

QString MusicSourceMpris::name() const
{
    if (!m_followed)
        return {};
    return m_followed->identity().isEmpty() ? m_followed->suffix() : m_followed->identity();
}

QString MusicSourceMpris::busName() const
{
    return m_followed ? m_followed->busName() : QString();
}

MprisSong MusicSourceMpris::song() const
{
    if (!m_followed || m_followed->status() == MprisPlayerTracker::Stopped ||
        m_followed->song().isEmpty())
        return {};
    return m_followed->song();
}

TrackItem* MusicSourceMpris::track()
{
    if (!m_running || !m_hasSong)
        return nullptr;
    return m_track.get();
}

float MusicSourceMpris::location() const
{
    if (!m_followed)
        return 0.0f;
    return float(m_followed->position(platform::now()) + double(kPositionLead));
}
