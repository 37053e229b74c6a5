#pragma once

#include "app/LyricLookup.h"
#include "app/PlayerSource.h"
#include "app/SongChangeQueue.h"

#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

class AppDelegate;
class LRCItem;

// Source choice and the update loop: which player is followed (the first running one in
// priority order), the 0.2 s tick that moves the displays along with it, and the song-change
// road that starts a lyric search.
class SourceLoop {
public:
    static constexpr qint64 kStallMs = 1000;

    explicit SourceLoop(AppDelegate& d);

    // Adds a player at its place in the priority list (0 first) and listens to it.
    void addSource(PlayerSource& source, int priority);
    PlayerSource* active() const { return m_active; }

    void updateMusicSource();
    void activeTimer();
    void deactiveTimer();
    void update();
    // One tick for this player, when it runs.
    void tick(PlayerSource* source);

    // A player's song-change notice (coalesced for players that ask for it).
    void songNotice(PlayerSource* source);

    // The song changed: the displays are cleared and any answer for an older song is stale.
    void songChanging();
    // Shows the song and looks for its lyric.
    void startSearch(const PlayerSong& song);
    // The song change being answered; an answer for another one is dropped.
    quint64 generation() const { return m_generation; }

    // A lyric was (re)installed: the lit line is looked up afresh.
    void lyricInstalled();

private:
    void handleSong(PlayerSource& source);
    void lookUp(lookup::Request request);
    // The followed player's name follows it into the menu and the service.
    void followTitle(const PlayerSource& source);
    void songPresent(const PlayerSong& song, PlayerSource& source);
    void drive(float seconds);
    void notPlaying(const QString& message);
    void lookedUp(lookup::Result result);

    AppDelegate& d;
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
