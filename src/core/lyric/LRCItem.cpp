#include "core/lyric/LRCItem.h"

#include "core/lyric/LrcPatterns.h"
#include "core/lyric/Lyric.h"

#include <algorithm>
#include <cstdint>

LRCItem::~LRCItem()
{
    m_lyric = nullptr;
}

void LRCItem::parseTimeFromTag(QStringView tag, Lyric* lyric)
{
    m_lyric = lyric;
    if (tag.size() < 2)
        return;
    const QStringView inner = tag.mid(1, tag.size() - 2);
    if (!lrc::readUsualTagTime(inner, m_minute, m_second))
        readTime(inner);
    // The integer product wraps like 32-bit arithmetic for absurd minute counts.
    const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(m_minute) * 60u);
    m_startTime = static_cast<float>(product) + m_second;
}

void LRCItem::readTime(QStringView inner)
{
    const auto* first = inner.utf16();
    const auto* colonAt = std::find(first, first + inner.size(), u':');
    const qsizetype colon = colonAt == first + inner.size() ? -1 : colonAt - first;
    const QStringView minutes = colon < 0 ? inner : inner.left(colon);
    const QStringView seconds = colon < 0 ? QStringView() : inner.mid(colon + 1);
    m_minute = lrc::readInt32(minutes);
    m_second = lrc::readFloat(seconds);
}

float LRCItem::startTime() const
{
    const double offset = m_lyric ? m_lyric->offsetTime() : 0.0;
    return static_cast<float>(static_cast<double>(m_startTime) + offset);
}

QString LRCItem::description() const
{
    return QString::asprintf("[%d:%f] ", m_minute, static_cast<double>(m_second)) + m_content;
}

LRCOrdering SortLRCItem(const LRCItem& a, const LRCItem& b, const void* context)
{
    return compareStartTimes(a.startTime(), b.startTime(), context);
}
