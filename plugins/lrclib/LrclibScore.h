#pragma once

#include <QString>
#include <QStringList>

// How well one LRCLIB candidate fits the song playing. Names are compared folded: case,
// accents, punctuation and blanks ignored (so CJK titles match with or without spaces), and a
// title's trailing "(Remastered 2011)", "[Live]", "- Live" or "feat. X" dropped; an artist
// matches when the whole names agree or one's lead artist is among the other's artists.
namespace lrclib {

struct Record;

// The folded form of a name; with the suffix dropped when stripSuffix. A name that is nothing
// but punctuation keeps it, so "?" still differs from "!".
QString foldName(const QString& text, bool stripSuffix);
// The same from a name already through matchKey().
QString foldKey(const QString& key, bool stripSuffix);
// The folded artists of a credit: "A feat. B & C" gives {"a", "b", "c"}, the lead first.
QStringList foldArtists(const QString& credit);

// The song as the player knows it, folded once for many candidates.
struct Wanted {
    Wanted(const QString& artist, const QString& title, double duration);
    QString artist;      // folded whole
    QStringList artists; // folded, split
    QString title;       // folded, suffix dropped
    QString exactTitle;  // folded, suffix kept
    double duration = 0; // seconds; 0 or less: unknown
};

struct Score {
    // Names match and the duration is within 10 s (or unknown on either side).
    bool acceptable = false;
    bool synced = false;
    int points = 0;           // among equals, more is better
    double durationGap = 1e9; // seconds; 1e9 when unknown
};

// Within 2 s is a match of the same recording; within 10 s an acceptable one.
inline constexpr double kCloseSeconds = 2.0;
inline constexpr double kAcceptableSeconds = 10.0;

Score scoreRecord(const Wanted& wanted, const Record& record);

// True when a should come before b: acceptable first, then synced, more points, smaller gap.
bool better(const Score& a, const Score& b);

} // namespace lrclib
