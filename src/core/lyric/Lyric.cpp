#include "lyric/Lyric.h"

#include "foundation/StableMergeSort.h"
#include "foundation/StringAdditions.h"
#include "foundation/SystemLog.h"
#include "foundation/TextDecoding.h"
#include "lyric/LrcPatterns.h"

#include <QFile>

#include <algorithm>
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

void Lyric::convertToLRCArray()
{
    m_itemCacheAssign = nullptr;
    m_lrcArray.clear();
    const QStringView text(m_contents);
    qsizetype lineStart = 0;
    while (lineStart <= text.size()) {
        qsizetype lineEnd = text.indexOf(u'\n', lineStart);
        if (lineEnd < 0)
            lineEnd = text.size();
        const QStringView line = text.mid(lineStart, lineEnd - lineStart);
        const QStringList tags = lrc::tagsFromLine(line);
        if (!tags.isEmpty()) {
            // One content for all of the line's tags: the items share the text.
            const QString content = lrc::contentFromLine(line);
            for (const QString& tag : tags) {
                auto item = std::make_unique<LRCItem>();
                item->parseTimeFromTag(tag, this);
                item->setContent(content);
                m_lrcArray.push_back(std::move(item));
            }
        }
        lineStart = lineEnd + 1;
    }
}

void Lyric::sortLRCs()
{
    const bool ascending = true;
    foundation::stableMergeSort(m_lrcArray, [&ascending](const auto& a, const auto& b) {
        return SortLRCItem(*a, *b, &ascending) == LRCOrdering::Less;
    });
    for (std::size_t i = 0; i < m_lrcArray.size(); ++i) {
        LRCItem& item = *m_lrcArray[i];
        item.setIndex(static_cast<int>(i));
        item.setEndTime(LastItemEndTime);
        if (i != 0)
            m_lrcArray[i - 1]->setEndTime(item.startTime());
    }
}

void Lyric::clean()
{
    m_contents = QString();
    m_itemCacheAssign = nullptr;
    m_lrcArray.clear();
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

void Lyric::setLrcArray(Items items)
{
    m_itemCacheAssign = nullptr; // the cache must never point into a released array
    m_lrcArray = std::move(items);
}

LRCItem* Lyric::lrcItemAtTime(double seconds)
{
    if (m_itemCacheAssign && seconds >= m_itemCacheAssign->startTime() &&
        m_itemCacheAssign->endTime() > seconds)
        return m_itemCacheAssign;

    for (int i = 0;; ++i) {
        const int count = lines();
        if (i >= count - 1) {
            m_itemCacheAssign = count > 0 ? m_lrcArray.back().get() : nullptr;
            return m_itemCacheAssign;
        }
        LRCItem* a = m_lrcArray[std::size_t(i)].get();
        const LRCItem* b = m_lrcArray[std::size_t(i) + 1].get();
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
    return m_lrcArray[std::size_t(index)].get();
}

std::int64_t Lyric::indexOfItem(const LRCItem* item) const
{
    for (std::size_t i = 0; i < m_lrcArray.size(); ++i) {
        if (m_lrcArray[i].get() == item)
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
    QString text(QLatin1String(""));
    for (const auto& item : m_lrcArray)
        text += item->content() + QLatin1Char('\n');
    return text;
}

void Lyric::debugItems() const
{
    for (const auto& item : m_lrcArray)
        foundation::systemLog(item->description());
}
