#pragma once

#include <QString>

#include <memory>

class LyricControl;

// Moves lyrics between music files and the lyrics folder, one file at a time: importing puts
// the lyric a file's tags hold into the folder, exporting puts the folder's lyric for the
// file's song into its tags. The song is named by the file's artist and title tags, and the
// folder's file name follows the application's own rule ("Artist--Title.lrc").
class AudioLyricsTransfer {
public:
    enum class Direction { Import, Export };
    struct Options {
        Direction direction = Direction::Import;
        bool dryRun = false; // decide, but write nothing
        bool force = false;  // replace a different lyric at the destination
    };
    struct Outcome {
        bool written = false; // or, in a dry run, would be
        QString reason;       // why it was skipped: a short phrase; empty when written
        QString lyricPath;    // the lyric's file in the folder, when the song has a name
    };

    explicit AudioLyricsTransfer(Options options);
    ~AudioLyricsTransfer();

    Outcome transfer(const QString& audioPath);

    // The phrases of Outcome::reason.
    static const char* const kUnsupported;
    static const char* const kNotAudio;
    static const char* const kNoSongName;
    static const char* const kNoLyric;
    static const char* const kSame;
    static const char* const kDifferentInFolder;
    static const char* const kDifferentInFile;
    static const char* const kReadOnly;
    static const char* const kReadOnlyFolder;

private:
    Outcome importFrom(const QString& audioPath, const QString& identify, const QString& artist,
                       const QString& title);
    Outcome exportTo(const QString& audioPath, const QString& identify);

    Options m_options;
    std::unique_ptr<LyricControl> m_store;
};
