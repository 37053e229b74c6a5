#pragma once

#include "core/app/LyricLookup.h"
#include "core/app/NotificationPort.h"
#include "core/app/PlayerSource.h"
#include "core/app/SongChangeQueue.h"
#include "core/app/UpdateTimer.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

class AppState;
class LRCItem;
class LyricAcquisition;
class LyricsTrack;
class Settings;
struct ShownLyric;

// Source choice and the update loop: which player is followed (the first running one in
// priority order), the 0.2 s tick that moves the displays along with it, and the song-change
// road: a player's notice clears the displays and looks for the song's lyric, handing what it
// finds (or that nothing was at hand) on to LyricAcquisition.
class SourceLoop : public QObject {
    Q_OBJECT
public:
    static constexpr int kTickMs = 200;
    static constexpr qint64 kStallMs = 1000;

    SourceLoop(AppState& state, ShownLyric& shown, Settings& settings,
               LyricAcquisition& acquisition, UpdateTimer::Factory timers);
    ~SourceLoop() override;

    // Adds a player at its place in the priority list (0 first) and listens to it.
    void addSource(PlayerSource& source, int priority);
    PlayerSource* active() const { return m_active; }

    void updateMusicSource();
    void activeTimer();
    void deactiveTimer();
    bool timerRunning() const { return m_timer != nullptr; }
    void update();
    // One tick for this player, when it runs.
    void tick(PlayerSource* source);

    // A player's song-change notice (coalesced for players that ask for it).
    void songNotice(PlayerSource* source);
    // Looks for the lyric of this track as a song change does.
    void fetchLRC(const LyricsTrack& track);

public Q_SLOTS:
    // A lyric was (re)installed: the lit line is looked up afresh.
    void lyricInstalled();

Q_SIGNALS:
    // The followed player changed (null: none).
    void playerChosen(PlayerSource* player);
    // The displays were cleared for a song change, the generation-th.
    void songChanging(quint64 generation);
    // A new song plays; its lyric is being looked for.
    void songChanged(const PlayerSong& song);
    // The song is to be announced (the setting is on).
    void songAnnounced(const NotificationPort::Track& track);
    // A message for the displays; empty clears it.
    void statusChanged(const QString& status);
    // The stored-lyric lookup of the playing song has answered and its answer was acted on.
    void lookupAnswered();

private:
    void handleSong(PlayerSource& source);
    void clearForSong();
    void startSearch(const PlayerSong& song);
    void lookUp(lookup::Request request);
    // The followed player's name follows it into the menu and the service.
    void followTitle(const PlayerSource& source);
    void songPresent(const PlayerSong& song, PlayerSource& source);
    void drive(float seconds);
    void notPlaying(const QString& message);
    void lookedUp(lookup::Result result);
    void actOnLookup(lookup::Result result);

    AppState& m_state;
    ShownLyric& m_shown;
    Settings& m_settings;
    LyricAcquisition& m_acquisition;
    UpdateTimer::Factory m_timers;
    std::unique_ptr<UpdateTimer> m_timer;
    struct Ranked {
        int priority;
        QPointer<PlayerSource> source;
    };
    std::vector<Ranked> m_sources; // in priority order
    QPointer<PlayerSource> m_active;
    QPointer<PlayerSource> m_noticed; // the coalesced player whose notice waits
    const LRCItem* m_litItem = nullptr;
    int m_litIndex = -1;
    bool m_litKnown = false;
    bool m_stalled = false;
    quint64 m_generation = 0;
    bool m_awaiting = false; // a lookup for this generation has not answered
    // What the lookup in flight is for: the plug-in is asked with it when nothing is found.
    QString m_searchArtist;
    QString m_searchTitle;
    SongChangeQueue m_changes;
    LyricLookupWorker m_lookup;
};
