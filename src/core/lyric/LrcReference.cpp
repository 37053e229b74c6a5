// The LRC patterns run through ICU's regular expression engine exactly as written: the
// yardstick for the hand-written scanners in LrcPatterns.cpp and LrcLineScanner.cpp.
#include "core/lyric/LrcPatterns.h"

#include "core/foundation/Assertion.h"

#include <unicode/regex.h>

#include <cstdlib>
#include <memory>

namespace lrc {
namespace {

icu::RegexMatcher& matcher(const char16_t* pattern)
{
    // One compiled matcher per pattern and thread, reset onto each text.
    struct Slot {
        const char16_t* pattern;
        std::unique_ptr<icu::RegexMatcher> matcher;
    };
    thread_local Slot cache[4];
    for (Slot& slot : cache) {
        if (slot.pattern == pattern)
            return *slot.matcher;
        if (!slot.pattern) {
            UErrorCode status = U_ZERO_ERROR;
            slot.matcher =
                std::make_unique<icu::RegexMatcher>(icu::UnicodeString(pattern), 0, status);
            if (U_FAILURE(status))
                foundation::assertionFailure(QStringLiteral("bad LRC pattern"));
            slot.pattern = pattern;
            return *slot.matcher;
        }
    }
    std::abort(); // more patterns than slots: a programming error caught by every test
}

// A read-only view for ICU: the text is never copied.
icu::UnicodeString alias(QStringView text)
{
    return icu::UnicodeString(false, reinterpret_cast<const char16_t*>(text.utf16()),
                              static_cast<int32_t>(text.size()));
}

struct Match {
    qsizetype start = -1;
    qsizetype end = -1;
    explicit operator bool() const { return start >= 0; }
};

Match find(const char16_t* pattern, QStringView text)
{
    icu::RegexMatcher& m = matcher(pattern);
    const icu::UnicodeString input = alias(text);
    UErrorCode status = U_ZERO_ERROR;
    m.reset(input);
    if (!m.find(0, status) || U_FAILURE(status))
        return {};
    const qsizetype start = m.start(status);
    const qsizetype end = m.end(status);
    if (U_FAILURE(status))
        return {};
    return {start, end};
}

} // namespace

namespace reference {

QStringList tagsFromLine(QStringView line)
{
    QStringList tags;
    QString work = line.toString();
    for (;;) {
        const Match match = find(kTimeTagPattern, work);
        if (!match)
            break;
        tags.append(work.mid(match.start, match.end - match.start));
        work.remove(match.start, match.end - match.start);
    }
    return tags;
}

QString contentFromLine(QStringView line)
{
    const Match match = find(kContentPattern, line);
    if (!match)
        return QString(QLatin1String(""));
    return line.mid(match.end).toString();
}

std::optional<OffsetTag> findOffsetTag(QStringView text)
{
    const Match tag = find(kOffsetPattern, text);
    if (!tag)
        return std::nullopt;
    const QStringView tagText = text.mid(tag.start, tag.end - tag.start);
    const Match number = find(kOffsetNumberPattern, tagText);
    OffsetTag result{tagText.toString(), 0};
    if (number)
        result.milliseconds = readInt32(tagText.mid(number.start, number.end - number.start));
    return result;
}

} // namespace reference
} // namespace lrc
