#include "lyric/LRCItem.h"

#include "lyric/LrcPatterns.h"
#include "lyric/Lyric.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

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
    const qsizetype colon = inner.indexOf(u':');
    const QStringView minutes = colon < 0 ? inner : inner.left(colon);
    const QStringView seconds = colon < 0 ? QStringView() : inner.mid(colon + 1);
    m_minute = lrc::readInt32(minutes);
    m_second = lrc::readFloat(seconds);
    // The integer product wraps like 32-bit arithmetic for absurd minute counts.
    const auto product = static_cast<std::int32_t>(static_cast<std::uint32_t>(m_minute) * 60u);
    m_startTime = static_cast<float>(product) + m_second;
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

namespace {
// Truncation toward zero that is defined for every float: NaN reads as 0 and values beyond
// the 32-bit range saturate.
std::int64_t truncateToInt32(float value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 2147483648.0f)
        return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483648.0f)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}
} // namespace

LRCOrdering SortLRCItem(const LRCItem& a, const LRCItem& b, const void* context)
{
    const float startA = a.startTime();
    const float startB = b.startTime();
    const float difference = startA - startB;
    if (std::llabs(truncateToInt32(difference)) < 1)
        return LRCOrdering::Same;
    const bool aLater = startA > startB;
    if (context)
        return aLater ? LRCOrdering::Greater : LRCOrdering::Less;
    return aLater ? LRCOrdering::Less : LRCOrdering::Greater;
}
