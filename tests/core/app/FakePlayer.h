#pragma once

#include "core/app/PlayerSource.h"

// A player the test drives by hand: what it reports is set on its fields.
class FakePlayer : public PlayerSource {
    Q_OBJECT
public:
    explicit FakePlayer(int kind, Rules rules = {})
        : m_kind(kind)
        , m_rules(rules)
    {
    }

    bool running = false;
    Change change = Change::Song;
    PlayerSong song = named(QStringLiteral("Ann"), QStringLiteral("Rain"));
    std::optional<PlayerSong> saved;
    int writesOrigin = -2; // the origin that also goes into the song
    int written = 0;

    static PlayerSong named(const QString& artist, const QString& title)
    {
        PlayerSong named;
        named.artist = artist;
        named.title = title;
        return named;
    }

    void setRunning(bool on)
    {
        running = on;
        Q_EMIT runningChanged();
    }

    int kind() const override { return m_kind; }
    Rules rules() const override { return m_rules; }
    bool isRunning() const override { return running; }
    QString menuTitle() const override { return QStringLiteral("player %1").arg(m_kind); }
    QString notPlayingText() const override { return QStringLiteral("not playing"); }
    Change readSongChange(PlayerSong& changed) override
    {
        changed = song;
        return change;
    }
    std::optional<PlayerSong> nowPlaying() override { return song; }
    float location() override { return 2.0f; }
    std::optional<PlayerSong> savedNames() override { return saved; }
    bool writesIntoSong(int origin) const override { return origin == writesOrigin; }
    bool writeIntoSong(const Lyric&, LyricControl&) override { return ++written; }

private:
    int m_kind;
    Rules m_rules;
};
