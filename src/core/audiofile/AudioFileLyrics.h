#pragma once

#include "core/audiofile/AudioTagWriter.h"
#include "core/foundation/RegularFile.h"

#include <QString>

#include <optional>

// Lyrics kept with a local audio file: in its lyrics tags, or in an .lrc file of the same
// base name beside it.
class AudioFileLyrics {
public:
    // Larger .lrc files are not read.
    static constexpr qint64 kMaxLrcBytes = foundation::kMaxLyricBytes;

    // The first lyrics tag that holds a lyric (the compressed block, or text with time tags),
    // as LRC text; nullopt when none does.
    static std::optional<QString> readLyric(const QString& audioPath);
    // "/music/a/song.flac" -> "/music/a/song.lrc"; null for an empty path.
    static QString lrcPathBeside(const QString& audioPath);
    // The text of the .lrc file beside the audio file, when it exists and is UTF-8 text.
    static std::optional<QString> readLrcBeside(const QString& audioPath);
    // Writes plain LRC text into the file's lyrics tag, replacing the file atomically and only
    // when it is writable; false, with the file unchanged, otherwise.
    static bool writeLyric(const QString& audioPath, const QString& lrcText);
    // The same, answering why nothing was written (Failed for blank text).
    static AudioTagWriter::Result writeLyricOrWhyNot(const QString& audioPath,
                                                     const QString& lrcText);

    // Whether the file name is of a format whose lyrics tag is read and written here.
    static bool isLyricFormat(const QString& audioPath);
    // Whether it names audio of another kind (".wma", ".mka"): found but unsupported.
    static bool isOtherAudioFormat(const QString& audioPath);
};
