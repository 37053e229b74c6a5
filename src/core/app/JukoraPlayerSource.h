#pragma once

#include "core/app/PlayerSource.h"

#include <memory>

class DistributedNotificationCenter;
class JukoraControl;
class Workspace;

// The Jukora player. Its song's names are read once per song, so a tick reads only the
// position; a lyric is saved in the folder under those names.
class JukoraPlayerSource : public PlayerSource {
    Q_OBJECT
public:
    JukoraPlayerSource(Workspace& workspace, DistributedNotificationCenter& center,
                       QObject* parent = nullptr);
    ~JukoraPlayerSource() override;

    // Starts reporting; the running state is reported at once.
    void connectPlayer();

    int kind() const override;
    bool isRunning() const override;
    QString menuTitle() const override;
    QString notPlayingText() const override;
    Change readSongChange(PlayerSong& changed) override;
    std::optional<PlayerSong> nowPlaying() override;
    float location() override;
    std::optional<PlayerSong> searchWindowSong() override;
    std::optional<PlayerSong> savedNames() override;
    void seek(double seconds, std::function<void(bool)> done) override;

    JukoraControl& control() const { return *m_control; }

private:
    std::unique_ptr<JukoraControl> m_control;
    // The names read at the song change.
    PlayerSong m_names;
};
