#pragma once

#include "core/sources/MprisSong.h"
#include "core/sources/SourceCallbacks.h"
#include "core/sources/TrackItem.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <map>
#include <memory>
#include <mutex>

class MprisPlayerTracker;
class QSettings;
class Workspace;

// Any MPRIS2 player on the session bus (org.mpris.MediaPlayer2.*). Of the players present
// and not ignored, the one followed is the one playing (the most recent to start playing
// when several are), else the one most recently seen paused; a stopped player is never
// followed. The source runs while it follows a player.
//
// Callbacks follow the target-and-selector contract of the other sources: registering sends
// the app-state callback at once; it is sent again whenever isRunning changes. The song
// callback is sent when the followed song changes (track id, title, artist or url, also by
// following another player), after the source has refreshed what it reports.
// Nothing waits on a player: track() and location() answer from what was last heard.
class MusicSourceMpris : public QObject {
    Q_OBJECT
public:
    static constexpr int kKind = 4;
    static constexpr float kPositionLead = 0.15f;
    static constexpr char kIgnoredPlayersKey[] = "mpris/ignoredPlayers";

    // Reads the ignore list from the user's settings file.
    explicit MusicSourceMpris(Workspace& workspace, QObject* parent = nullptr);
    // Reads the ignore list from this store instead.
    MusicSourceMpris(Workspace& workspace, QSettings& settings, QObject* parent = nullptr);
    ~MusicSourceMpris() override;

    void setCallBack(QObject* target, const QByteArray& songChanged,
                     const QByteArray& appStateChanged);
    const SourceCallbacks& callbacks() const { return m_callbacks; }

    bool isRunning() const { return m_running; }
    // The followed player's Identity, or its bus-name suffix when it gives none; null when
    // none is followed. This is the menu's title for the source.
    QString name() const;
    // The followed player's bus name; null when none.
    QString busName() const;
    // The followed song; null when no player is followed, it is stopped, or its song has
    // neither a title nor a url. Length is in whole seconds.
    TrackItem* track();
    // The followed song in full (url, length, track id); empty when track() is null.
    MprisSong song() const;
    // Seconds, interpolated, plus the lead; 0 when no player is followed.
    float location() const;

    // Bus-name suffixes ("vlc" also covers "vlc.instance123") or Identities, compared
    // without regard to case. Changing the list re-chooses the player at once.
    QStringList ignoredPlayers() const { return m_ignored; }
    void setIgnoredPlayers(const QStringList& ignored);
    static QStringList ignoredPlayersIn(QSettings& settings);
    bool isIgnored(const MprisPlayerTracker& player) const;

private:
    void init();
    void onNames(const QStringList& names);
    void addPlayer(const QString& busName);
    void removePlayer(const QString& busName);
    MprisPlayerTracker* choose() const;
    void reevaluate();
    void _appLifeChanged(bool alive);

    Workspace& m_workspace;
    QStringList m_ignored;
    std::map<QString, std::unique_ptr<MprisPlayerTracker>> m_players;
    QPointer<MprisPlayerTracker> m_followed;
    SourceCallbacks m_callbacks;
    bool m_running = false;
    bool m_hasSong = false;
    MprisSong m_reportedSong;
    std::unique_ptr<TrackItem> m_track = std::make_unique<TrackItem>();
    std::recursive_mutex m_lock; // the running state and its callback
};
