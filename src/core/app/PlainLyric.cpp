#include "core/app/PlainLyric.h"

#include "core/lyric/LRCItem.h"
#include "core/lyric/Lyric.h"

#include <QStringList>

namespace plainlyric {

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
    constexpr float kNever = Lyric::LastItemEndTime;
    std::vector<std::unique_ptr<LRCItem>> items;
    QStringList lines = text.split(u'\n');
    lines.prepend(QString());
    for (QString& line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        auto item = std::make_unique<LRCItem>();
        item->setContent(line);
        item->setStartTime(kNever);
        item->setEndTime(kNever);
        item->setIndex(int(items.size()));
        items.push_back(std::move(item));
    }
    auto lyric = std::make_unique<Lyric>();
    lyric->setContents(text);
    lyric->setLrcArray(std::move(items));
    return lyric;
}

} // namespace plainlyric
