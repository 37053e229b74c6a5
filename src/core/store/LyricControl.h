#pragma once

#include "core/foundation/RegularFile.h"

#include "core/store/LyricControlDelegate.h"
#include "core/store/LyricStorageFile.h"

#include <QString>

#include <memory>
#include <vector>

class Lyric;
class LyricsTrack;

// The lyrics folder: one UTF-8 LRC file per song named "Artist--Title.lrc", nothing trimmed
// or escaped. Names that cannot be a file in the folder (a path separator, NUL, too long) are
// never read or written: reading finds nothing and writing does nothing, quietly. Only
// regular files are lyrics: a link, a pipe or a folder under a lyric's name reads as no
// lyric and is never written to or replaced.
// Also reads and writes the lyric block embedded in a track's lyrics tag.
class LyricControl {
public:
    // Files larger than this are not lyrics; they read as absent.
    static constexpr qint64 kMaxLyricFileSize = foundation::kMaxLyricBytes;

    static QString _pathAppDatas();
    static QString _pathLrcs();
    static QString _pathForIdentify(const QString& fileName);
    static void _createDictionaryInNecessary();
    static QString lyricsPath();

    // Why a lyric cannot be stored under this identify name, as a phrase ("a name may not
    // contain ..."); a null string when it can.
    static QString whyNotStorable(const QString& identify);
    // The folder holds something other than a regular file under this name.
    static bool isTakenByNonLyric(const QString& identify);

    QString identifyFromArtist(const QString& artist, const QString& song) const;
    QString fileNameFromTrack(const LyricsTrack& track) const;

    std::unique_ptr<Lyric> readLrcByIdentify(const QString& identify) const;
    void writeLrcAsIdentify(const Lyric& lyric, const QString& identify, bool overwrite);
    void writeLrc(const Lyric& lyric, const QString& artist, const QString& song, bool overwrite);
    // Answers through the delegate before returning; nothing at all for an empty name.
    void fetchLrcByArtist(const QString& artist, const QString& song);
    void scanLrcFilesSync();
    QString pathOfFile(const LyricStorageFile& file) const;

    // withLRC is accepted and ignored: the compressed block is always written.
    void writeLrcToTrack(const Lyric& lyric, LyricsTrack& track, bool overwrite, bool withLRC);
    // The block in the track's tag (source 1), else the folder by the track's artist and name.
    void fetchLrcFromTrackTags(const LyricsTrack& track);

    LyricControlDelegate* delegate() const { return m_delegate; }
    void setDelegate(LyricControlDelegate* delegate) { m_delegate = delegate; }
    const QString& artist() const { return m_artist; }
    const QString& song() const { return m_song; }
    const std::vector<LyricStorageFile>& lyricFiles() const { return m_lyricFiles; }

private:
    std::vector<LyricStorageFile> m_lyricFiles;
    LyricControlDelegate* m_delegate = nullptr; // not owned
    QString m_artist;
    QString m_song;
};
