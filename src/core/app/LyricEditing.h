#pragma once

#include "core/app/PlayerSource.h"

#include <QString>

#include <functional>
#include <optional>

class AppDelegate;
class PlayClock;

// What the lyric editor needs from the controller: the song and lyric to start from, the play
// time, seeking, and saving. None of these wait for a player: the play time is the followed
// source's own estimate.
namespace lyricediting {

// The installed lyric's text (a plain lyric included), or an empty text.
QString initialText(const AppDelegate& delegate);
// The song an editor opens on. Its lyric is saved under these names even when another song
// plays by then: a save never lands on the wrong song's file.
struct EditedSong {
    PlayerSong shown;                // names, album, duration: the editor's title, publishing
    std::optional<PlayerSong> filed; // the names in the lyrics folder; none: not kept there
};
// The song playing; none when no player plays one.
std::optional<EditedSong> song(AppDelegate& delegate);
// Seconds into the song: the update loop's last reading of the followed player, run on by a
// clock between readings (the player is never asked here, so a slow one cannot stall a tap).
double playTime(AppDelegate& delegate, PlayClock& clock);
// Asks the followed player to play from there; done answers whether it did.
void seek(AppDelegate& delegate, double seconds, std::function<void(bool)> done);
// Writes the text to the edited song's file in the lyrics folder (atomically) and installs it
// when that song still plays; a sentence saying why not when no line has a time, there is no
// song to save it for or the file did not land.
std::optional<QString> save(AppDelegate& delegate, const std::optional<EditedSong>& song,
                            const QString& lrc);

} // namespace lyricediting
