#pragma once

#include "core/app/PlayerSource.h"
#include "core/sources/iTunesControl.h"

#include <optional>

// iTunes, through its scripting objects. Its song is read at the change (once per track: a
// repeated notice for the same track changes nothing); a lyric is saved in the folder and in
// the track's own tag.
class ITunesPlayerSource : public PlayerSource, public iTunesControlDelegate {
    Q_OBJECT
public:
    // Becomes the control's delegate and reads its current track. Not owned.
    explicit ITunesPlayerSource(iTunesControl& control, QObject* parent = nullptr);
    ~ITunesPlayerSource() override;

    int kind() const override;
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

    // The control's callbacks: reported as runningChanged and songChanged.
    void iTunesCB_AppLifeCycleChanged(bool alive) override;
    void iTunesCB_TrackDidChange(const std::optional<itunes::Track>& track) override;

    // The database id of the song last read; -1 before any.
    qint64 databaseID() const { return m_databaseID; }

private:
    iTunesControl& m_control;
    std::optional<itunes::Track> m_track; // read at the last change
    qint64 m_databaseID = -1;
    // The track a notice came with; without one, a change reads the current track.
    std::optional<std::optional<itunes::Track>> m_noticed;
};
