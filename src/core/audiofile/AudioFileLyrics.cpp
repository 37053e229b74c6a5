#include "core/audiofile/AudioFileLyrics.h"

#include "core/audiofile/AudioTagReader.h"
#include "core/audiofile/AudioTagWriter.h"
#include "core/audiofile/TagLyricText.h"
#include "core/foundation/TextDecoding.h"

#include <QDir>
#include <QFileInfo>

std::optional<QString> AudioFileLyrics::readLyric(const QString& audioPath)
{
    for (const QString& text : AudioTagReader::lyricTexts(audioPath)) {
        if (auto lrc = taglyrics::lrcFromTagText(text))
            return lrc;
    }
    return std::nullopt;
}

QString AudioFileLyrics::lrcPathBeside(const QString& audioPath)
{
    if (audioPath.isEmpty())
        return {};
    const QFileInfo info(audioPath);
    return info.dir().filePath(info.completeBaseName() + QLatin1String(".lrc"));
}

std::optional<QString> AudioFileLyrics::readLrcBeside(const QString& audioPath)
{
    const QString path = lrcPathBeside(audioPath);
    if (path.isEmpty())
        return std::nullopt;
    const auto bytes =
        foundation::readLyricFile(QStringLiteral("The .lrc file"), path, kMaxLrcBytes);
    if (!bytes)
        return std::nullopt;
    return foundation::decodeText(*bytes, foundation::kUTF8Encoding);
}

bool AudioFileLyrics::writeLyric(const QString& audioPath, const QString& lrcText)
{
    return writeLyricOrWhyNot(audioPath, lrcText) == AudioTagWriter::Result::Written;
}

AudioTagWriter::Result AudioFileLyrics::writeLyricOrWhyNot(const QString& audioPath,
                                                           const QString& lrcText)
{
    if (audioPath.isEmpty())
        return AudioTagWriter::Result::Missing;
    if (lrcText.trimmed().isEmpty())
        return AudioTagWriter::Result::Failed;
    return AudioTagWriter::writeLyrics(audioPath, lrcText);
}

namespace {
bool hasSuffixIn(const QString& path, std::initializer_list<const char*> suffixes)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    for (const char* s : suffixes) {
        if (suffix == QLatin1String(s))
            return true;
    }
    return false;
}
} // namespace

bool AudioFileLyrics::isLyricFormat(const QString& audioPath)
{
    return hasSuffixIn(audioPath, {"mp3", "flac", "ogg", "oga", "opus", "m4a", "m4b", "mp4", "ape",
                                   "wv", "wav", "aif", "aiff"});
}

bool AudioFileLyrics::isOtherAudioFormat(const QString& audioPath)
{
    return hasSuffixIn(audioPath, {"wma", "mka", "aac", "ac3", "dts", "mpc", "tta", "spx", "dsf",
                                   "dff", "mid", "midi", "amr", "au", "webm", "alac", "caf"});
}
