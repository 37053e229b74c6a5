#pragma once

#include "core/lyric/WordTags.h"

#include <QString>
#include <QStringView>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

class Lyric;

// One timed line of a lyric document. Start times are read through the document's current
// offset; end times are fixed when the document is sorted and do not follow later offsets.
class LRCItem {
public:
    LRCItem() = default;
    ~LRCItem();
    LRCItem(const LRCItem&) = delete;
    LRCItem& operator=(const LRCItem&) = delete;

    // Reads a tag such as "[01:23.45]" and remembers the document (not owned).
    void parseTimeFromTag(QStringView tag, Lyric* lyric);

    // The stored start plus the document's offset, summed in double, narrowed to float.
    float startTime() const;
    void setStartTime(float seconds) { m_startTime = seconds; }
    float endTime() const { return m_endTime; }
    void setEndTime(float seconds) { m_endTime = seconds; }
    const QString& content() const { return m_content; }
    void setContent(const QString& content) { m_content = content; }
    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }
    int minute() const { return m_minute; }
    float second() const { return m_second; }
    Lyric* lyric() const { return m_lyric; }
    // The start as read from the tag, without the document's offset.
    float tagTime() const { return m_startTime; }
    // The line's word timing, starts relative to tagTime(); null for a line without word tags.
    // Shared by the items of one line.
    const std::shared_ptr<const lrc::WordTiming>& words() const { return m_words; }
    void setWords(std::shared_ptr<const lrc::WordTiming> words) { m_words = std::move(words); }

    // "[minute:second] content", the seconds with six decimals: "[1:23.450000] Hello".
    QString description() const;

private:
    // The minutes and seconds of a tag's inside, split at its first ":".
    void readTime(QStringView inner);

    float m_startTime = 0.0f;
    float m_endTime = 0.0f;
    QString m_content;
    int m_minute = 0;
    float m_second = 0.0f;
    int m_index = 0;
    Lyric* m_lyric = nullptr;
    std::shared_ptr<const lrc::WordTiming> m_words;
};

enum class LRCOrdering { Less = -1, Same = 0, Greater = 1 };

// Orders by start time, but treats start times less than a whole second apart as the same:
// lines that close keep the order the (stable) sort leaves them in. A non-null context sorts
// ascending; a null one reverses the answers. Only the context's presence matters.
LRCOrdering SortLRCItem(const LRCItem& a, const LRCItem& b, const void* context);

// SortLRCItem on two start times (offset included), for sorts that read them once.
inline LRCOrdering compareStartTimes(float startA, float startB, const void* context)
{
    // The difference truncated toward zero, defined for every float: NaN reads as 0 and
    // values beyond the 32-bit range saturate.
    const float difference = startA - startB;
    std::int64_t whole = 0;
    if (std::isnan(difference))
        whole = 0;
    else if (difference >= 2147483648.0f)
        whole = std::numeric_limits<std::int32_t>::max();
    else if (difference <= -2147483648.0f)
        whole = std::numeric_limits<std::int32_t>::min();
    else
        whole = static_cast<std::int32_t>(difference);
    if (std::llabs(whole) < 1)
        return LRCOrdering::Same;
    const bool aLater = startA > startB;
    if (context)
        return aLater ? LRCOrdering::Greater : LRCOrdering::Less;
    return aLater ? LRCOrdering::Less : LRCOrdering::Greater;
}
