#include "core/store/LyricControl.h"

#include "core/foundation/AppPaths.h"
#include "core/foundation/StringAdditions.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricFiles.h"
#include "core/store/LyricTagBlock.h"
#include "core/store/LyricsTrack.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace {

const QString kExtension = QStringLiteral("lrc");

// The longest file name, in bytes, that Linux file systems take.
constexpr qsizetype kMaxFileNameBytes = 255;

QString withExtension(const QString& identify)
{
    return identify + u'.' + kExtension;
}

} // namespace

QString LyricControl::_pathAppDatas()
{
    return foundation::userLibraryPath() + QStringLiteral("/Versewick");
}

QString LyricControl::_pathLrcs()
{
    return _pathAppDatas() + QStringLiteral("/lyrics.lrcs");
}

QString LyricControl::_pathForIdentify(const QString& fileName)
{
    return _pathLrcs() + u'/' + fileName;
}

void LyricControl::_createDictionaryInNecessary()
{
    QDir().mkpath(_pathLrcs());
}

QString LyricControl::lyricsPath()
{
    _createDictionaryInNecessary();
    return _pathLrcs();
}

QString LyricControl::whyNotStorable(const QString& identify)
{
    if (identify.contains(u'/'))
        return QStringLiteral("a name may not contain \"/\"");
    if (identify.contains(QChar(0)))
        return QStringLiteral("a name may not contain a NUL character");
    const qsizetype bytes = QFile::encodeName(withExtension(identify)).size();
    if (bytes > kMaxFileNameBytes)
        return QStringLiteral("its file name would be %1 bytes long, and a file name may have "
                              "at most %2")
            .arg(bytes)
            .arg(kMaxFileNameBytes);
    return {};
}

bool LyricControl::isTakenByNonLyric(const QString& identify)
{
    return whyNotStorable(identify).isNull() &&
           lyricfiles::entryAt(_pathForIdentify(withExtension(identify))) ==
               lyricfiles::Entry::Other;
}

QString LyricControl::identifyFromArtist(const QString& artist, const QString& song) const
{
    return artist + QStringLiteral("--") + song;
}

QString LyricControl::fileNameFromTrack(const LyricsTrack& track) const
{
    return withExtension(identifyFromArtist(track.artist(), track.name()));
}

std::unique_ptr<Lyric> LyricControl::readLrcByIdentify(const QString& identify) const
{
    if (!whyNotStorable(identify).isNull())
        return nullptr;
    const auto bytes =
        lyricfiles::readRegularFile(_pathForIdentify(withExtension(identify)), kMaxLyricFileSize);
    if (!bytes)
        return nullptr;
    const auto text = Lyric::decodeText(*bytes, Lyric::UTF8Encoding);
    // An empty file holds no text: it is treated like a missing one.
    if (!text || text->isEmpty())
        return nullptr;
    auto lyric = std::make_unique<Lyric>();
    lyric->parseLRCcontent(*text);
    return lyric;
}

void LyricControl::writeLrcAsIdentify(const Lyric& lyric, const QString& identify, bool overwrite)
{
    _createDictionaryInNecessary();
    if (!foundation::isNonEmpty(lyric.contents()) || !whyNotStorable(identify).isNull() ||
        isTakenByNonLyric(identify))
        return;
    if (!overwrite && readLrcByIdentify(identify))
        return;
    lyricfiles::replaceFile(_pathForIdentify(withExtension(identify)), lyric.contents().toUtf8());
}

void LyricControl::writeLrc(const Lyric& lyric, const QString& artist, const QString& song,
                            bool overwrite)
{
    writeLrcAsIdentify(lyric, identifyFromArtist(artist, song), overwrite);
}

void LyricControl::fetchLrcByArtist(const QString& artist, const QString& song)
{
    if (artist.isEmpty() || song.isEmpty())
        return;
    m_artist = artist;
    m_song = song;
    std::unique_ptr<Lyric> lyric = readLrcByIdentify(identifyFromArtist(artist, song));
    if (!m_delegate)
        return;
    if (lyric)
        m_delegate->controlLrcFetched(*this, std::move(lyric), LyricControlDelegate::FromFolder);
    else if (m_delegate->respondsToLrcFetchFailed())
        m_delegate->controlLrcFetchFailed(*this, nullptr, 0);
}

void LyricControl::scanLrcFilesSync()
{
    std::vector<LyricStorageFile> files;
    QDirIterator it(_pathLrcs(),
                    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    while (it.hasNext()) {
        it.next();
        if (auto file = LyricStorageFile::fileFromFileName(it.fileName()))
            files.push_back(std::move(*file));
    }
    m_lyricFiles = std::move(files);
}

QString LyricControl::pathOfFile(const LyricStorageFile& file) const
{
    return _pathForIdentify(file.fileName);
}

void LyricControl::writeLrcToTrack(const Lyric& lyric, LyricsTrack& track, bool overwrite,
                                   bool /*withLRC*/)
{
    const auto text = tagblock::tagTextForLyric(lyric);
    if (!text)
        return;
    if (foundation::isNonEmpty(track.lyrics()) && !overwrite)
        return;
    track.setLyrics(*text);
}

void LyricControl::fetchLrcFromTrackTags(const LyricsTrack& track)
{
    if (const auto text = tagblock::lrcFromTagText(track.lyrics())) {
        auto lyric = std::make_unique<Lyric>();
        lyric->parseLRCcontent(*text);
        if (m_delegate)
            m_delegate->controlLrcFetched(*this, std::move(lyric),
                                          LyricControlDelegate::FromTrackTag);
        return;
    }
    fetchLrcByArtist(track.artist(), track.name());
}
