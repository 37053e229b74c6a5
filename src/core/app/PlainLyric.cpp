#include "core/app/PlainLyric.h"

#include "core/lyric/Lyric.h"

#include <QStringList>

namespace plainlyric {

namespace {
constexpr int kNeverMinutes = 9000;
} // namespace

std::optional<Pick> pickCandidate(const QVariantList& items)
{
    if (items.isEmpty())
        return std::nullopt;
    const QVariantMap first = items.first().toMap();
    if (!first.value(QStringLiteral("match"), true).toBool())
        return std::nullopt;
    if (first.value(QStringLiteral("synced"), true).toBool())
        return Pick{items.first(), false, {}};
    const QString text = first.value(QStringLiteral("plainLyrics")).toString();
    if (text.trimmed().isEmpty())
        return std::nullopt;
    return Pick{items.first(), true, text};
}

std::unique_ptr<Lyric> lyricFromPlainText(const QString& text)
{
    // Parsed like any lyric (the displays read only a parsed document), each line timed a
    // hundredth after the one before it from 150 hours on: in order, and never reached.
    QStringList lines = text.split(u'\n');
    lines.prepend(QString());
    QString lrc;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QString line = lines[i];
        if (line.endsWith(u'\r'))
            line.chop(1);
        const qsizetype centis = i;
        lrc += QStringLiteral("[%1:%2.%3]%4\n")
                   .arg(kNeverMinutes + centis / 6000)
                   .arg(centis / 100 % 60, 2, 10, QChar(u'0'))
                   .arg(centis % 100, 2, 10, QChar(u'0'))
                   .arg(line);
    }
    auto lyric = std::make_unique<Lyric>();
    lyric->parseLRCcontent(lrc);
    lyric->setContents(text);
    return lyric;
}

} // namespace plainlyric
