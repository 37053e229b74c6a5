#pragma once

#include <QString>

#include <optional>

class Lyric;
class LyricControl;

// Fixing a lyric's timing: a new offset for the installed lyric, kept in the lyric's own text and
// saved to the song's file in the lyrics folder (never into audio files or track tags).
namespace offsetnudge {

inline constexpr double kStep = 0.1;    // seconds, one "Lyric Earlier" / "Lyric Later"
inline constexpr double kLimit = 600.0; // seconds either way

// The offset as stored: whole milliseconds; none when NaN, infinite or beyond kLimit.
std::optional<double> validOffset(double seconds);

// What became of a new offset.
enum class Outcome {
    Saved,        // applied and written to the song's lyric file
    NotSaved,     // applied, but the file could not be written (the old file is untouched)
    NoSongNames,  // applied; the player gives no names to save the lyric under
    TagNotInText, // applied to the lines, but the lyric's text kept no tag to save
    Refused,      // out of range or not a number: nothing changed
};

// Gives the lyric the offset through its setOffsetTime, which replaces the offset tag it read
// or last wrote, or appends one when it has none; false (nothing changed) when refused.
bool setOffset(Lyric& lyric, double seconds);

// What a lyric's text is saved as: its names and its text with the offset tag; none when it
// cannot be (see Outcome).
struct Snapshot {
    QString artist;
    QString title;
    QString text;
};
Outcome snapshot(const Lyric& lyric, const QString& artist, const QString& title, Snapshot& taken);
// Writes the text to "Artist--Title.lrc" in the lyrics folder, replacing that file atomically or
// creating it: Saved or NotSaved.
Outcome save(const Snapshot& taken, LyricControl& store);

// All three in a row.
Outcome apply(Lyric& lyric, double seconds, LyricControl& store, const QString& artist,
              const QString& title);

// "Offset +0.3 s": the notice shown after a nudge.
QString noticeText(double seconds);

} // namespace offsetnudge
