#pragma once

#include <QString>

class AppDelegate;
class LRCItem;

// Source choice and the update loop: which player is followed, the 0.2 s tick that moves the
// displays along with it, and the per-source song-change paths that start a lyric search.
class SourceLoop {
public:
    static constexpr qint64 kStallMs = 1000;

    explicit SourceLoop(AppDelegate& d)
        : d(d)
    {
    }

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
    void startSearch(const QString& artist, const QString& title);

    AppDelegate& d;
    // Names read once per song, so that a tick reads only the position.
    QString m_itunesName;
    QString m_itunesArtist;
    QString m_djTitle;
    QString m_djArtist;
    const LRCItem* m_litItem = nullptr;
    int m_litIndex = -1;
    bool m_litKnown = false;
    bool m_stalled = false;
};
