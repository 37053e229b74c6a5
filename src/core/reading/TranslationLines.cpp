#include "core/reading/TranslationLines.h"

#include "core/foundation/StringAdditions.h"
#include "core/lyric/LRCItem.h"
#include "core/lyric/Lyric.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

QString timeKey(int minute, float second)
{
    return QString::number(minute) + QLatin1Char(':') + QString::number(double(second), 'f', 3);
}

// The times of a text line's tags, sorted: two lines with the same tags have the same key.
QString tagsKey(QStringView line)
{
    QStringList keys;
    for (const QString& tag : Lyric::tagsFromLine(line)) {
        LRCItem item;
        item.parseTimeFromTag(tag, nullptr);
        keys.append(timeKey(item.minute(), item.second()));
    }
    keys.sort();
    return keys.join(QLatin1Char(','));
}

QString pairKey(const QString& time, const QString& before, const QString& after)
{
    return time + QChar(0) + before + QChar(0) + after;
}

// Every (time, line, next line) where the next line in the text repeats the line's tags.
QSet<QString> translationPairs(const QString& contents)
{
    QSet<QString> pairs;
    QString previousTags, previousContent;
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    for (const QString& line : contents.split(lineBreak)) {
        if (line.trimmed().isEmpty())
            continue;
        const QString tags = tagsKey(line);
        const QString content = Lyric::contentFromLine(line);
        if (!tags.isEmpty() && tags == previousTags && foundation::isNonEmpty(previousContent)) {
            for (const QString& time : tags.split(QLatin1Char(',')))
                pairs.insert(pairKey(time, previousContent, content));
        }
        previousTags = tags;
        previousContent = content;
    }
    return pairs;
}

} // namespace

namespace translation {

std::vector<int> owners(const Lyric& lyric)
{
    const int n = lyric.lines();
    std::vector<int> owner(std::size_t(std::max(0, n)));
    for (int i = 0; i < n; ++i)
        owner[std::size_t(i)] = i;
    // Reading the text again is only worth it when two lines share a tag.
    bool shared = false;
    for (int i = 1; i < n && !shared; ++i) {
        const LRCItem* before = lyric.lrcItemAtIndex(i - 1);
        const LRCItem* item = lyric.lrcItemAtIndex(i);
        shared = before && item && before->minute() == item->minute() &&
                 before->second() == item->second();
    }
    if (!shared)
        return owner;
    const QSet<QString> pairs = translationPairs(lyric.contents());
    if (pairs.isEmpty())
        return owner;
    for (int i = 1; i < n; ++i) {
        const LRCItem* before = lyric.lrcItemAtIndex(i - 1);
        const LRCItem* item = lyric.lrcItemAtIndex(i);
        if (!before || !item || before->minute() != item->minute() ||
            before->second() != item->second())
            continue;
        const QString time = timeKey(item->minute(), item->second());
        if (pairs.contains(pairKey(time, before->content(), item->content())))
            owner[std::size_t(i)] = owner[std::size_t(i - 1)];
    }
    // Runs longer than an original with two lines under it are left as they are.
    for (int start = 0; start < n;) {
        int end = start + 1;
        while (end < n && owner[std::size_t(end)] == start)
            ++end;
        if (end - start > kMaxLinesOnOneTag)
            for (int i = start; i < end; ++i)
                owner[std::size_t(i)] = i;
        start = end;
    }
    return owner;
}

} // namespace translation
