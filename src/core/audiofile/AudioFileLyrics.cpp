#include "audiofile/AudioFileLyrics.h"

#include "audiofile/AudioTagReader.h"
#include "audiofile/AudioTagWriter.h"
#include "audiofile/TagLyricText.h"
#include "foundation/TextDecoding.h"

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
    if (audioPath.isEmpty() || lrcText.trimmed().isEmpty())
        return false;
    return AudioTagWriter::writeLyrics(audioPath, lrcText);
}
