#include "core/audiofile/AudioLyricsTransfer.h"

#include "core/audiofile/AudioFileLyrics.h"
#include "core/audiofile/AudioTagReader.h"
#include "core/lyric/Lyric.h"
#include "core/store/LyricControl.h"

const char* const AudioLyricsTransfer::kUnsupported = "unsupported format";
const char* const AudioLyricsTransfer::kNotAudio = "not readable as audio (damaged?)";
const char* const AudioLyricsTransfer::kNoSongName = "no artist or title tag";
const char* const AudioLyricsTransfer::kNoLyric = "no lyric";
const char* const AudioLyricsTransfer::kSame = "already the same";
const char* const AudioLyricsTransfer::kDifferentInFolder =
    "a different lyric is in the lyrics folder (--force replaces it)";
const char* const AudioLyricsTransfer::kDifferentInFile =
    "a different lyric is in the file (--force replaces it)";
const char* const AudioLyricsTransfer::kReadOnly = "read-only";
const char* const AudioLyricsTransfer::kReadOnlyFolder = "read-only folder";

namespace {

// Line ends and surrounding blanks do not make two lyrics different.
QString normalized(const QString& text)
{
    QString out = text;
    out.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return out.trimmed();
}

AudioLyricsTransfer::Outcome skipped(const QString& reason, const QString& lyricPath = {})
{
    return {false, reason, lyricPath};
}

QString reasonFor(AudioTagWriter::Result result)
{
    using R = AudioTagWriter::Result;
    switch (result) {
    case R::Written:
        return {};
    case R::ReadOnlyFile:
        return QLatin1String(AudioLyricsTransfer::kReadOnly);
    case R::ReadOnlyFolder:
        return QLatin1String(AudioLyricsTransfer::kReadOnlyFolder);
    case R::NotAudio:
        return QLatin1String(AudioLyricsTransfer::kNotAudio);
    case R::TooLarge:
        return QStringLiteral("too large");
    case R::Missing:
        return QStringLiteral("gone");
    case R::Failed:
        break;
    }
    return QStringLiteral("the tag could not be written");
}

} // namespace

AudioLyricsTransfer::AudioLyricsTransfer(Options options)
    : m_options(options)
    , m_store(std::make_unique<LyricControl>())
{
}

AudioLyricsTransfer::~AudioLyricsTransfer() = default;

AudioLyricsTransfer::Outcome AudioLyricsTransfer::transfer(const QString& audioPath)
{
    if (!AudioFileLyrics::isLyricFormat(audioPath))
        return skipped(QLatin1String(kUnsupported));
    const auto song = AudioTagReader::song(audioPath);
    if (!song)
        return skipped(QLatin1String(kNotAudio));
    if (song->artist.isEmpty() || song->title.isEmpty())
        return skipped(QLatin1String(kNoSongName));
    const QString identify = m_store->identifyFromArtist(song->artist, song->title);
    if (const QString why = LyricControl::whyNotStorable(identify); !why.isNull())
        return skipped(why);
    if (m_options.direction == Direction::Import)
        return importFrom(audioPath, identify, song->artist, song->title);
    return exportTo(audioPath, identify);
}

AudioLyricsTransfer::Outcome AudioLyricsTransfer::importFrom(const QString& audioPath,
                                                             const QString& identify,
                                                             const QString& artist,
                                                             const QString& title)
{
    const QString target = LyricControl::_pathForIdentify(identify + QStringLiteral(".lrc"));
    const auto text = AudioFileLyrics::readLyric(audioPath);
    if (!text)
        return skipped(QLatin1String(kNoLyric), target);
    if (LyricControl::isTakenByNonLyric(identify))
        return skipped(QStringLiteral("the lyrics folder holds something else under its name"),
                       target);
    if (const auto stored = m_store->readLrcByIdentify(identify)) {
        if (normalized(stored->contents()) == normalized(*text))
            return skipped(QLatin1String(kSame), target);
        if (!m_options.force)
            return skipped(QLatin1String(kDifferentInFolder), target);
    }
    if (m_options.dryRun)
        return {true, {}, target};
    Lyric lyric;
    lyric.parseLRCcontent(*text);
    m_store->writeLrc(lyric, artist, title, true);
    const auto back = m_store->readLrcByIdentify(identify);
    if (!back || normalized(back->contents()) != normalized(*text))
        return skipped(QStringLiteral("the lyrics folder could not be written"), target);
    return {true, {}, target};
}

AudioLyricsTransfer::Outcome AudioLyricsTransfer::exportTo(const QString& audioPath,
                                                           const QString& identify)
{
    const QString source = LyricControl::_pathForIdentify(identify + QStringLiteral(".lrc"));
    const auto stored = m_store->readLrcByIdentify(identify);
    if (!stored || stored->contents().trimmed().isEmpty())
        return skipped(QLatin1String(kNoLyric), source);
    const auto held = AudioFileLyrics::readLyric(audioPath);
    if (held && normalized(*held) == normalized(stored->contents()))
        return skipped(QLatin1String(kSame), source);
    // Any text in the file's lyrics tags counts, plain words typed by the user included.
    if (!m_options.force) {
        for (const QString& text : AudioTagReader::lyricTexts(audioPath)) {
            if (!normalized(text).isEmpty())
                return skipped(QLatin1String(kDifferentInFile), source);
        }
    }
    if (m_options.dryRun) {
        const auto result = AudioTagWriter::writability(audioPath);
        return {result == AudioTagWriter::Result::Written, reasonFor(result), source};
    }
    const auto result = AudioFileLyrics::writeLyricOrWhyNot(audioPath, stored->contents());
    return {result == AudioTagWriter::Result::Written, reasonFor(result), source};
}
