#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class Lyric;
class LyricControl;

// A song as a player reports it; each call below says which fields it fills.
struct PlayerSong {
    QString artist;
    QString title;
    QString album;
    double duration = 0.0; // seconds; 0 when unknown
    QString localFile;     // the song's audio file, when it is one
    QString tagText;       // a lyric the player keeps with the song
    // A local file without a title is shown by its file name.
    QString shownTitle() const;
};

// One music player the controller can follow, whatever its protocol. The controller keeps a
// priority list of these and follows the first that runs; everything that differs between
// players is answered here, so the controller never asks which player it follows.
class PlayerSource : public QObject {
    Q_OBJECT
public:
    // What a song-change notice comes to once the player was read.
    enum class Change {
        None,   // nothing changed: the displays stay as they are
        NoSong, // the displays clear; there is no song to look for
        Song,   // the displays clear and the song's lyric is looked for
    };

    // How the controller treats the player's song changes and searches.
    struct Rules {
        // Notices are coalesced, handled only while this player is followed, and its songs'
        // plug-in searches go one at a time with answers for an earlier song dropped. For a
        // player that may send anything.
        bool coalesced = false;
        // A song change leaves the lyric shown (and its origin) until the new one is found.
        bool keepsLyricUntilFound = false;
    };

    using QObject::QObject;

    // The kind published as SourceKind (MusicSourceKind).
    virtual int kind() const = 0;
    virtual Rules rules() const { return {}; }
    virtual bool isRunning() const = 0;
    // The source's title in the menu.
    virtual QString menuTitle() const = 0;
    // Shown while the player runs without a song.
    virtual QString notPlayingText() const = 0;

    // After a notice, or on being chosen: reads the player and keeps what it read. With Song,
    // song changed fills the names, the local file and the tag text.
    virtual Change readSongChange(PlayerSong& changed) = 0;
    // The names to show on a tick (artist, shown title); none when no song plays.
    virtual std::optional<PlayerSong> nowPlaying() = 0;
    // Seconds into the song, the player's lead included.
    virtual float location() = 0;
    // The song to announce on a change (names, album, duration); none when it is not announced.
    virtual std::optional<PlayerSong> announcement() { return std::nullopt; }
    // What a plug-in search can use beyond the names (album, duration).
    virtual PlayerSong searchDetails() { return {}; }
    // The song the manual search starts from (artist, title), read afresh; none: no search.
    virtual std::optional<PlayerSong> searchWindowSong() { return std::nullopt; }

    // Save rules. The names a lyric of the current song is saved under in the lyrics folder;
    // none: this player's lyrics are never kept there.
    virtual std::optional<PlayerSong> savedNames() { return std::nullopt; }
    // Whether a lyric of this origin (AppState::Origin) also goes into the song itself.
    virtual bool writesIntoSong(int /*origin*/) const { return false; }
    // Writes the lyric into the song (its tag or its audio file); false when it did not land.
    virtual bool writeIntoSong(const Lyric& /*lyric*/, LyricControl& /*store*/) { return false; }

    // Asks the player to play from this second (the player's lead not included) and answers
    // done(true) once it agreed; done(false) when it cannot be moved, refused, or did not answer
    // within its limit. Never blocks; done comes from the event loop, at most once, and not
    // after this source is gone.
    virtual void seek(double seconds, std::function<void(bool)> done);

Q_SIGNALS:
    void songChanged();
    // Started or quit.
    void runningChanged();
};
