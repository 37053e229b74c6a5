#pragma once

#include "core/app/PlayerSource.h"

#include <memory>

class MusicSourceMpris;
class QSettings;
class Workspace;

// Any MPRIS player, the last in priority. It may send anything, so its notices are coalesced;
// a lyric from the plug-in also goes into a local audio file.
class MprisPlayerSource : public PlayerSource {
    Q_OBJECT
public:
    explicit MprisPlayerSource(Workspace& workspace, QObject* parent = nullptr);
    // Reads the ignore list from this store instead of the user's settings file.
    MprisPlayerSource(Workspace& workspace, QSettings& settings, QObject* parent = nullptr);
    ~MprisPlayerSource() override;

    // Starts reporting; the running state is reported at once.
    void connectPlayer();

    int kind() const override;
    Rules rules() const override { return {true, false}; }
    bool isRunning() const override;
    QString menuTitle() const override;
    QString notPlayingText() const override;
    Change readSongChange(PlayerSong& changed) override;
    std::optional<PlayerSong> nowPlaying() override;
    float location() override;
    std::optional<PlayerSong> announcement() override;
    PlayerSong searchDetails() override;
    std::optional<PlayerSong> searchWindowSong() override;
    std::optional<PlayerSong> savedNames() override;
    bool writesIntoSong(int origin) const override;
    bool writeIntoSong(const Lyric& lyric, LyricControl& store) override;
    void seek(double seconds, std::function<void(bool)> done) override;

    MusicSourceMpris& source() const { return *m_source; }

private:
    // The followed song as it is now; none without one.
    std::optional<PlayerSong> current() const;

    std::unique_ptr<MusicSourceMpris> m_source;
};
