#pragma once

#include "core/app/PlayerSource.h"

#include <memory>

class DistributedNotificationCenter;
class MusicSourceQQMusic;
class Workspace;

// The QQMusic player, through its HTTP service. A song change leaves the lyric shown until
// the new one is found; its lyrics are never saved.
class QQMusicPlayerSource : public PlayerSource {
    Q_OBJECT
public:
    QQMusicPlayerSource(Workspace& workspace, DistributedNotificationCenter& center,
                        QObject* parent = nullptr);
    ~QQMusicPlayerSource() override;

    // Starts reporting; the running state is reported at once.
    void connectPlayer();

    int kind() const override;
    Rules rules() const override { return {false, true}; }
    bool isRunning() const override;
    QString menuTitle() const override;
    QString notPlayingText() const override;
    Change readSongChange(PlayerSong& changed) override;
    std::optional<PlayerSong> nowPlaying() override;
    float location() override;
    PlayerSong searchDetails() override;

    MusicSourceQQMusic& control() const { return *m_control; }

private:
    std::unique_ptr<MusicSourceQQMusic> m_control;
};
