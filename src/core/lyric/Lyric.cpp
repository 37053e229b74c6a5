#include "core/lyric/Lyric.h"

#include "core/foundation/StringAdditions.h"
#include "core/foundation/SystemLog.h"
#include "core/foundation/TextDecoding.h"
#include "core/lyric/LrcLineScanner.h"
#include "core/lyric/LrcPatterns.h"
#include "core/lyric/StartTimeSort.h"
#include "core/lyric/WordTags.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

std::optional<QString> Lyric::decodeText(const QByteArray& bytes, std::uint64_t encoding,
                                         QString* error)
{
    return foundation::decodeText(bytes, encoding, error);
}

bool Lyric::parseLRCfile(const QString& path)
{
    QString error;
    std::optional<QString> text;
    QFile file(path);
    if (path.isEmpty())
        error = QStringLiteral("No file name was given.");
    else if (!file.open(QIODevice::ReadOnly))
        error = file.errorString();
    else
        text = decodeText(file.readAll(), m_fileEncoding, &error);
    if (!text) {
        foundation::systemLog(QStringLiteral("error on read lrc file %1").arg(error));
        return false;
    }
    parseLRCcontent(*text);
    return true;
}

bool Lyric::parseLRCname(const QString& name)
{
    return parseLRCfile(name.isEmpty() ? QString() : QStringLiteral(":/") + name);
}

void Lyric::parseLRCcontent(const QString& text)
{
    clean();
    m_contents = text;
    fetchOffsetTime();
    convertToLRCArray();
    sortLRCs();
    m_isParsed = true;
}

void Lyric::fetchOffsetTime()
{
    m_offsetTime = 0.0;
    const auto tag = lrc::findOffsetTag(m_contents);
    if (!tag)
        return;
    m_offsetItem = tag->text;
    m_offsetTime = static_cast<double>(tag->milliseconds) / 1000.0;
}

namespace {
// Word starts relative to a line's own time, so that the items of a line sung more than once
// ("[00:10.00][00:40.00]<00:10.00>...") each fill from their own start. Null for a line
// whose tags left no word.
std::shared_ptr<const lrc::WordTiming> relativeWordTiming(lrc::WordTiming timing, float lineTime)
{
    if (timing.words.empty())
        return nullptr;
    float previous = -std::numeric_limits<float>::infinity();
    for (auto& word : timing.words) {
        word.start = std::isnan(word.start) ? 0.0f : word.start - lineTime;
        word.start = previous = std::max(previous, word.start);
    }
    timing.end -= lineTime; // NaN stays NaN
    return std::make_shared<const lrc::WordTiming>(std::move(timing));
}
} // namespace

void Lyric::shareWordTiming(lrc::WordTiming timing, std::size_t firstItem)
{
    // The word tags were written against one of the line's times: the latest one not after
    // the first tagged word, else the earliest.
    float firstWord = std::numeric_limits<float>::quiet_NaN();
    for (const auto& word : timing.words) {
        if (!std::isnan(word.start)) {
            firstWord = word.start;
            break;
        }
    }
    float lineTime = std::numeric_limits<float>::infinity();
    float latestBefore = -std::numeric_limits<float>::infinity();
    for (std::size_t i = firstItem; i < m_lrcArray.size(); ++i) {
        const float t = m_lrcArray[i]->tagTime();
        lineTime = std::min(lineTime, t);
        if (t <= firstWord)
            latestBefore = std::max(latestBefore, t);
    }
    if (std::isfinite(latestBefore))
        lineTime = latestBefore;
    const auto words = relativeWordTiming(std::move(timing), lineTime);
    for (std::size_t i = firstItem; i < m_lrcArray.size(); ++i)
        m_lrcArray[i]->setWords(words);
}

void Lyric::convertToLRCArray()
{
    m_itemCacheAssign = nullptr;
    m_lrcArray.clear();
    m_items.clear();
    const QStringView text(m_contents);
    lrc::LrcLineScanner scanner;
    // Lines are split on line feeds only; the text after the last one is a line too.
    for (qsizetype lineStart = 0; lineStart <= text.size();) {
        const qsizetype lineEnd = scanner.scanLine(text, lineStart);
        if (scanner.tagCount() > 0) {
            // One content for all of the line's tags: the items share the text.
            const qsizetype start = scanner.contentStart();
            QString content = start < 0 ? QString(QLatin1String(""))
                                        : text.mid(start, lineEnd - start).toString();
            std::optional<lrc::WordTaggedText> tagged;
            if (content.contains(u'<'))
                tagged = lrc::readWordTags(content);
            if (tagged)
                content = std::move(tagged->text);
            const std::size_t first = m_lrcArray.size();
            for (qsizetype i = 0; i < scanner.tagCount(); ++i) {
                LRCItem* item = m_items.create();
                item->parseTimeFromTag(scanner.tag(i), this);
                item->setContent(content);
                m_lrcArray.push_back(item);
            }
            if (tagged)
                shareWordTiming(std::move(tagged->timing), first);
        }
        lineStart = lineEnd + 1;
    }
}

void Lyric::sortLRCs()
{
    // Each start time is read once; the sort then works on one array of plain keys.
    std::vector<lrc::StartTimeKey> keys(m_lrcArray.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        keys[i] = {m_lrcArray[i]->startTime(), static_cast<std::uint32_t>(i)};
    lrc::sortByStartTime(keys);
    Items sorted(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        LRCItem* item = m_lrcArray[keys[i].position];
        sorted[i] = item;
        item->setIndex(static_cast<int>(i));
        item->setEndTime(LastItemEndTime);
        if (i != 0)
            sorted[i - 1]->setEndTime(keys[i].start);
    }
    m_lrcArray.swap(sorted);
}

void Lyric::clean()
{
    m_contents = QString();
    m_itemCacheAssign = nullptr;
    m_lrcArray.clear();
    m_items.clear();
    m_isParsed = false;
    m_offsetTime = 0.0;
}

QStringList Lyric::tagsFromLine(QStringView line)
{
    return lrc::tagsFromLine(line);
}

QString Lyric::contentFromLine(QStringView line)
{
    return lrc::contentFromLine(line);
}

void Lyric::setLrcArray(std::vector<std::unique_ptr<LRCItem>> items)
{
    m_itemCacheAssign = nullptr; // the cache must never point into a released array
    m_lrcArray.clear();
    m_items.clear();
    for (auto& item : items) {
        if (item)
            m_lrcArray.push_back(m_items.adopt(std::move(item)));
    }
}

LRCItem* Lyric::lrcItemAtTime(double seconds)
{
    if (m_itemCacheAssign && seconds >= m_itemCacheAssign->startTime() &&
        m_itemCacheAssign->endTime() > seconds)
        return m_itemCacheAssign;

    for (int i = 0;; ++i) {
        const int count = lines();
        if (i >= count - 1) {
            m_itemCacheAssign = count > 0 ? m_lrcArray.back() : nullptr;
            return m_itemCacheAssign;
        }
        LRCItem* a = m_lrcArray[std::size_t(i)];
        const LRCItem* b = m_lrcArray[std::size_t(i) + 1];
        if (seconds >= a->startTime() && b->startTime() > seconds) {
            m_itemCacheAssign = a;
            return a;
        }
        if (a->startTime() > seconds) {
            m_itemCacheAssign = nullptr;
            return nullptr;
        }
    }
}

QString Lyric::lyricsAtTime(double seconds)
{
    const LRCItem* item = lrcItemAtTime(seconds);
    return item ? item->content() : QString();
}

LRCItem* Lyric::lrcItemAtIndex(int index) const
{
    if (!m_isParsed || index < 0 || index >= lines())
        return nullptr;
    return m_lrcArray[std::size_t(index)];
}

std::int64_t Lyric::indexOfItem(const LRCItem* item) const
{
    for (std::size_t i = 0; i < m_lrcArray.size(); ++i) {
        if (m_lrcArray[i] == item)
            return static_cast<std::int64_t>(i);
    }
    return NotFound;
}

int Lyric::itemIndexNonEmptyContent(int index) const
{
    // Positions past the end hold no item, so the walk down can start at the last one.
    for (int i = std::min(index, lines() - 1); i >= 0; --i) {
        const LRCItem* item = lrcItemAtIndex(i);
        if (item && foundation::isNonEmpty(item->content()))
            return i;
    }
    return -1;
}

void Lyric::setOffsetTime(double seconds)
{
    m_offsetTime = seconds;
    const double milliseconds = seconds * 1000.0;
    const int length = std::snprintf(nullptr, 0, "[offset:%.f]", milliseconds);
    std::string formatted(std::size_t(length) + 1, '\0');
    std::snprintf(formatted.data(), formatted.size(), "[offset:%.f]", milliseconds);
    const QString tag = QString::fromLatin1(formatted.data(), length);

    if (!m_contents.isNull()) {
        if (!m_offsetItem.isNull())
            m_contents.replace(m_offsetItem, tag);
        else
            m_contents += QLatin1Char('\n') + tag;
    }
    m_offsetItem = tag;
}

QString Lyric::contentsReadable() const
{
    qsizetype length = 0;
    for (const LRCItem* item : m_lrcArray)
        length += item->content().size() + 1;
    // Filled in place: appending item by item costs more than the copying itself.
    QString text(length, Qt::Uninitialized);
    QChar* out = text.data();
    for (const LRCItem* item : m_lrcArray) {
        const QString& content = item->content();
        std::copy_n(content.constData(), content.size(), out);
        out += content.size();
        *out++ = QLatin1Char('\n');
    }
    return text;
}

void Lyric::debugItems() const
{
    for (const auto& item : m_lrcArray)
        foundation::systemLog(item->description());
}
