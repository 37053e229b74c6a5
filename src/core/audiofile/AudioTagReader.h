#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// Reads the lyrics tags of an audio file through TagLib: ID3v2 USLT and SYLT (MP3, FLAC,
// WAV, AIFF), Xiph comments LYRICS and UNSYNCEDLYRICS (FLAC, Ogg Vorbis, Opus), MP4 "©lyr"
// and APE "Lyrics" (Monkey's Audio, WavPack, MP3). No TagLib type appears here.
class AudioTagReader {
public:
    enum class Format { Mpeg, Flac, OggVorbis, Opus, Mp4, Ape, WavPack };
    static constexpr int kFormatCount = 7;
    // Files larger than this are not opened (a tag is never near that size).
    static constexpr qint64 kMaxFileBytes = qint64(2) << 30;

    // The texts of the lyrics tags, in order of preference: LYRICS, LYRICS:<description>,
    // UNSYNCEDLYRICS, then each millisecond-timed SYLT frame turned into LRC lines. Empty
    // when the file is missing, unreadable, too large or not an audio file TagLib knows.
    static QStringList lyricTexts(const QString& path);
    // The song a file's tags name; nullopt when TagLib finds no audio in it (missing,
    // unreadable, damaged or of a format TagLib does not know).
    struct Song {
        QString artist;
        QString title;
        QString album;
    };
    static std::optional<Song> song(const QString& path);
    // The same for the bytes of a file of the given format, read in memory.
    static QStringList lyricTextsFromBytes(const QByteArray& bytes, Format format);
    // TagLib's own complaints about malformed files go to standard error unless disabled.
    static void setDiagnosticsEnabled(bool enabled);
};
