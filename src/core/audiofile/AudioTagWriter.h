#pragma once

#include <QString>

// Writes a lyric into an audio file's lyrics tag through TagLib (ID3v2 USLT, Xiph LYRICS,
// MP4 "©lyr", APE "Lyrics"). The file is never changed in place: a copy in the same folder
// gets the tag, is read back and checked, then renamed over the original. On any failure the
// copy is removed and the original stays as it was, byte for byte.
class AudioTagWriter {
public:
    enum class Result {
        Written,
        Missing,        // no regular file under that name
        ReadOnlyFile,   // the file, or its owner's permission, is not writable
        ReadOnlyFolder, // its folder is not writable, so no copy can be renamed over it
        TooLarge,
        NotAudio, // TagLib finds no audio: damaged or of a format it does not know
        Failed,   // the copy could not be made, tagged, checked or renamed
    };

    // What the writer would refuse before trying, from the file's metadata only: Written
    // when it may try.
    static Result writability(const QString& path);
    // Written, or why nothing was changed.
    static Result writeLyrics(const QString& path, const QString& text);
};
