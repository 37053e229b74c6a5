#pragma once

#include "app/LyricLookup.h"
#include "app/SongChangeQueue.h"

#include <QString>

#include <memory>

class AppDelegate;
class LRCItem;

// Source choice and the update loop: which player is followed, the 0.2 s tick that moves the
// displays along with it, and the per-source song-change paths that start a lyric search.
class SourceLoop {
public:
    static constexpr qint64 kStallMs = 1000;

    explicit SourceLoop(AppDelegate& d);

    void updateMusicSource();
    void activeTimer();
    void deactiveTimer();
    void update();
    void updateAppItunes();
    void updateAppQQMusic();
    void updateAppJukora();
    void updateAppFollowed();

    void iTunesTrackDidChange(bool exists, qint64 databaseID);
    void qqmusicSongChanged();
    void djSongChanged();
    void followedSongChanged();

    // The song changed: the displays are cleared and any answer for an older song is stale.
    void songChanging();
    // Looks for the current song's lyric off the main thread (tag text, audio file, folder);
    // the plug-in is asked when that finds none.
    void lookUp(lookup::Request request);
    // The song change being answered; an answer for another one is dropped.
    quint64 generation() const { return m_generation; }
    // The followed player's name follows it into the menu and the service.
    void followedTitleChanged();

    // A lyric was (re)installed: the lit line is looked up afresh.
    void lyricInstalled();
    // The cached Jukora song's names, as read at its song change.
    const QString& jukoraArtist() const { return m_djArtist; }
    const QString& jukoraTitle() const { return m_djTitle; }

private:
    void tick();
    void songPresent(const QString& title, const QString& artist, float (*position)(AppDelegate&));
    void drive(float seconds);
    void notPlaying(const QString& message);
    void startSearch(const QString& artist, const QString& title, const QString& audioPath = {});
    void handleFollowed();
    void lookedUp(lookup::Result result);

    AppDelegate& d;
    // Jukora's names, read once per song, so that a tick reads only the position.
    QString m_djTitle;
    QString m_djArtist;
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
