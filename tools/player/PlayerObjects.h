#pragma once

#include "Playback.h"

#include <QByteArrayList>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>

#include <functional>

// The players' scripting objects, served on D-Bus with their properties.

class ITunesApplicationObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.apple.iTunes.Application")
    Q_PROPERTY(QString version READ version)
    Q_PROPERTY(uint playerState READ playerState)
    Q_PROPERTY(QDBusVariant playerPosition READ playerPosition WRITE setPlayerPosition)
    Q_PROPERTY(QDBusObjectPath currentTrack READ currentTrack)
public:
    ITunesApplicationObject(Playback& playback, QString version,
                            std::function<void(QString)> command);
    QString version() const { return m_version; }
    uint playerState() const;
    QDBusVariant playerPosition() const;
    // A Set moves the clock: any number of seconds.
    void setPlayerPosition(const QDBusVariant& seconds);
    QDBusObjectPath currentTrack() const;

public Q_SLOTS:
    void playpause() { m_command(QStringLiteral("playpause")); }
    void backTrack() { m_command(QStringLiteral("previous")); }
    void nextTrack() { m_command(QStringLiteral("next")); }
    void quit() { m_command(QStringLiteral("quit itunes")); }

private:
    Playback& m_playback;
    QString m_version;
    std::function<void(QString)> m_command;
};

class ITunesTrackObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.apple.iTunes.Track")
    Q_PROPERTY(bool exists READ exists)
    Q_PROPERTY(qlonglong databaseID READ databaseID)
    Q_PROPERTY(QString name READ name)
    Q_PROPERTY(QString artist READ artist)
    Q_PROPERTY(QString album READ album)
    Q_PROPERTY(double duration READ duration)
    Q_PROPERTY(bool enabled READ enabled)
    Q_PROPERTY(QString lyrics READ lyrics WRITE setLyrics)
    Q_PROPERTY(int rating READ rating)
    Q_PROPERTY(QByteArrayList artworks READ artworks)
public:
    ITunesTrackObject(Song& song, qlonglong id);
    bool exists() const { return true; }
    qlonglong databaseID() const { return m_id; }
    QString name() const { return m_song.title; }
    QString artist() const { return m_song.artist; }
    QString album() const { return m_song.album; }
    double duration() const { return m_song.duration; }
    bool enabled() const { return true; }
    QString lyrics() const { return m_song.lyrics; }
    void setLyrics(const QString& text) { m_song.lyrics = text; }
    int rating() const { return 0; }
    QByteArrayList artworks() const { return {}; }

private:
    Song& m_song;
    qlonglong m_id;
};

class JukoraApplicationObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.morvane.Jukora.Application")
    Q_PROPERTY(QDBusObjectPath song READ song)
    Q_PROPERTY(double location READ location WRITE setLocation)
public:
    explicit JukoraApplicationObject(Playback& playback);
    QDBusObjectPath song() const;
    double location() const { return m_playback.position(); }
    void setLocation(double seconds) { m_playback.seek(seconds); }

private:
    Playback& m_playback;
};

class JukoraSongObject : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.morvane.Jukora.DJItem")
    Q_PROPERTY(QString title READ title)
    Q_PROPERTY(QString artist READ artist)
public:
    explicit JukoraSongObject(const Song& song)
        : m_song(song)
    {
    }
    QString title() const { return m_song.title; }
    QString artist() const { return m_song.artist; }

private:
    const Song& m_song;
};
