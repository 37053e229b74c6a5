#pragma once

#include <QString>

// Writes a lyric into an audio file's lyrics tag through TagLib (ID3v2 USLT, Xiph LYRICS,
// MP4 "©lyr", APE "Lyrics"). The file is never changed in place: a copy in the same folder
// gets the tag, is read back and checked, then renamed over the original. On any failure the
// copy is removed and the original stays as it was, byte for byte.
class AudioTagWriter {
public:
    // False, and nothing changed, when the file (or its folder) is not writable, TagLib cannot
    // open or save it, or the tag does not read back as written.
    static bool writeLyrics(const QString& path, const QString& text);
};
