#pragma once

#include <QString>

#include <optional>

class Lyric;

// The lyric block kept in a track's free-text lyrics tag: the readable lines, 40 line feeds,
// a notice, then the whole LRC text compressed between "=QVNOW=" and "=QVEOF=".
namespace tagblock {

inline constexpr char kNotice[] =
    "=QVInfo=following datas was a format of karaoke style lyric attached by Versewick, plz "
    "don't modify anything below.\n";
inline constexpr char kStartMarker[] = "=QVNOW=";
inline constexpr char kEndMarker[] = "=QVEOF=";
inline constexpr int kSpacerLineFeeds = 40;

// The complete tag text for a lyric, or nullopt when nothing would be written: the text is
// absent or blank, no timed line has any text, or the text is too large to be read back
// (over foundation::kMaxInflatedSize bytes of UTF-8).
std::optional<QString> tagTextForLyric(const Lyric& lyric);

// The LRC text recovered from a tag text: between the first start marker and the first end
// marker, Base64 then zlib (at most 16 MiB) then UTF-8. nullopt when there is no block, it
// does not decode, or the text is blank.
std::optional<QString> lrcFromTagText(const QString& tagText);

} // namespace tagblock
