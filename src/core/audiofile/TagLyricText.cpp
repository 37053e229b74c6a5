#include "core/audiofile/TagLyricText.h"

#include "core/lyric/Lyric.h"
#include "core/store/LyricTagBlock.h"

namespace taglyrics {

std::optional<QString> lrcFromTagText(const QString& text)
{
    if (text.isEmpty())
        return std::nullopt;
    if (auto block = tagblock::lrcFromTagText(text))
        return block;
    Lyric lyric;
    lyric.parseLRCcontent(text);
    if (lyric.lines() == 0)
        return std::nullopt;
    return text;
}

QString lrcFromSyncedLines(const QList<SyncedLine>& lines)
{
    QString out;
    for (const SyncedLine& line : lines) {
        const quint32 centiseconds = line.milliseconds / 10;
        const quint32 minutes = centiseconds / 6000;
        const quint32 seconds = centiseconds / 100 % 60;
        QString text = line.text;
        text.replace(QLatin1String("\r\n"), QLatin1String(" "));
        text.replace(u'\r', u' ').replace(u'\n', u' ');
        out += QStringLiteral("[%1:%2.%3]%4\n")
                   .arg(minutes, 2, 10, QLatin1Char('0'))
                   .arg(seconds, 2, 10, QLatin1Char('0'))
                   .arg(centiseconds % 100, 2, 10, QLatin1Char('0'))
                   .arg(text.trimmed());
    }
    return out;
}

} // namespace taglyrics
