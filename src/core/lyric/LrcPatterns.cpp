#include "lyric/LrcPatterns.h"

#include "foundation/Assertion.h"

#include <unicode/regex.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace lrc {
namespace {

// "\d+\.?\d*" backtracks quadratically on a long run of digits that is not closed by "]".
// Possessive quantifiers match exactly the same texts (after a maximal digit run the next
// character is not a digit, so giving digits back can never help), in linear time.
constexpr char16_t kTimeTagPatternLinear[] = u"\\[\\d++:\\d++\\.?+\\d*+\\]";

icu::RegexMatcher& matcher(const char16_t* pattern)
{
    // One compiled matcher per pattern and thread, reset onto each text.
    struct Slot {
        const char16_t* pattern;
        std::unique_ptr<icu::RegexMatcher> matcher;
    };
    thread_local Slot cache[6];
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

icu::UnicodeString alias(const char16_t* data, qsizetype length)
{
    return icu::UnicodeString(false, data, static_cast<int32_t>(length));
}

icu::UnicodeString alias(QStringView text)
{
    return alias(reinterpret_cast<const char16_t*>(text.utf16()), text.size());
}

struct Match {
    qsizetype start = -1;
    qsizetype end = -1;
    explicit operator bool() const { return start >= 0; }
};

Match find(icu::RegexMatcher& m, const icu::UnicodeString& input, qsizetype from = 0)
{
    UErrorCode status = U_ZERO_ERROR;
    m.reset(input);
    if (!m.find(from, status) || U_FAILURE(status))
        return {};
    const qsizetype start = m.start(status);
    const qsizetype end = m.end(status);
    if (U_FAILURE(status))
        return {};
    return {start, end};
}

// Characters at which ICU's "." stops (besides the CR LF pair, made of two of them).
bool isLineTerminator(char16_t c)
{
    return c == 0x0A || c == 0x0B || c == 0x0C || c == 0x0D || c == 0x85 || c == 0x2028 ||
           c == 0x2029;
}

bool isBracket(char16_t c)
{
    return c == u'[' || c == u']';
}

} // namespace

QStringList tagsFromLine(QStringView line)
{
    QStringList tags;
    if (!line.contains(u']'))
        return tags;

    // The line is worked on as a gap buffer: buf[0, w) is the text kept so far with the
    // tags cut out (it holds no tag), buf[r, n) is the text not yet searched. Cutting a tag
    // only advances r, so nothing is moved but the kept text, and nothing is searched twice
    // except an open "[" tail that may close across a cut.
    std::u16string buf(reinterpret_cast<const char16_t*>(line.utf16()),
                       static_cast<size_t>(line.size()));
    const qsizetype n = line.size();
    qsizetype w = 0;
    qsizetype r = 0;
    std::vector<qsizetype> brackets; // positions of the brackets in the kept text
    icu::RegexMatcher& m = matcher(kTimeTagPatternLinear);

    while (r < n) {
        qsizetype from = r;
        // Only from a last "[" of the kept text can a tag run on into the unsearched text,
        // and only if the next bracket there is "]".
        if (!brackets.empty() && buf[size_t(brackets.back())] == u'[') {
            qsizetype k = r;
            while (k < n && !isBracket(buf[size_t(k)]))
                ++k;
            if (k < n && buf[size_t(k)] == u']') {
                const qsizetype tail = brackets.back();
                const qsizetype tailLength = w - tail;
                std::memmove(&buf[size_t(r - tailLength)], &buf[size_t(tail)],
                             size_t(tailLength) * sizeof(char16_t));
                brackets.pop_back();
                w = tail;
                from = r - tailLength;
            }
        }
        // A tag needs a "[" with a "]" after it; most lines run out of both after their
        // tags, and this scan is far cheaper than asking the regex engine.
        const auto first = buf.begin() + from;
        const auto open = std::find(first, buf.end(), u'[');
        if (open == buf.end() || std::find(open, buf.end(), u']') == buf.end())
            break;
        const icu::UnicodeString window = alias(buf.data() + from, n - from);
        const Match match = find(m, window);
        if (!match)
            break;
        const qsizetype start = from + match.start;
        const qsizetype end = from + match.end;
        tags.append(QString(reinterpret_cast<const QChar*>(buf.data() + start), end - start));

        for (qsizetype i = from; i < start; ++i) {
            if (isBracket(buf[size_t(i)]))
                brackets.push_back(w + (i - from));
        }
        if (start > from)
            std::memmove(&buf[size_t(w)], &buf[size_t(from)],
                         size_t(start - from) * sizeof(char16_t));
        w += start - from;
        r = end;
    }
    return tags;
}

QString contentFromLine(QStringView line)
{
    // The match starts at the first "[" that a later "]" on the same stretch between line
    // terminators can close with at least one character between (blanks before that "[" do
    // not change where the match ends). Starting ICU there keeps lines full of unmatched
    // brackets linear; the greedy ".+" then runs to the last "]" of the stretch.
    const qsizetype n = line.size();
    qsizetype candidate = -1;
    qsizetype open = -1;
    for (qsizetype i = 0; i < n && candidate < 0; ++i) {
        const char16_t c = line[i].unicode();
        if (isLineTerminator(c))
            open = -1;
        else if (c == u'[' && open < 0)
            open = i;
        else if (c == u']' && open >= 0 && i >= open + 2)
            candidate = open;
    }
    if (candidate < 0)
        return QString(QLatin1String(""));
    // The greedy run ends at the stretch's last "]": handing ICU the text up to there gives
    // the same match without backtracking over the rest of the line.
    qsizetype lastClose = candidate;
    for (qsizetype i = candidate; i < n && !isLineTerminator(line[i].unicode()); ++i) {
        if (line[i] == u']')
            lastClose = i;
    }
    const QStringView stretch = line.mid(candidate, lastClose + 1 - candidate);
    const Match match = find(matcher(kContentPattern), alias(stretch));
    if (!match)
        return QString(QLatin1String(""));
    return line.mid(candidate + match.end).toString();
}

std::optional<OffsetTag> findOffsetTag(QStringView text)
{
    const Match tag = find(matcher(kOffsetPattern), alias(text));
    if (!tag)
        return std::nullopt;
    const QStringView tagText = text.mid(tag.start, tag.end - tag.start);
    const Match number = find(matcher(kOffsetNumberPattern), alias(tagText));
    OffsetTag result{tagText.toString(), 0};
    if (number)
        result.milliseconds = readInt32(tagText.mid(number.start, number.end - number.start));
    return result;
}

namespace {
struct NumberText {
    bool negative = false;
    std::string digits; // ASCII digits and at most one "."
};

NumberText scanNumber(QStringView text, bool allowFraction)
{
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace())
        ++i;
    NumberText result;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) {
        result.negative = text[i] == u'-';
        ++i;
    }
    bool seenDot = false;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            result.digits.push_back(char(c));
        } else if (c == u'.' && allowFraction && !seenDot) {
            seenDot = true;
            result.digits.push_back('.');
        } else {
            break;
        }
    }
    return result;
}
} // namespace

std::int32_t readInt32(QStringView text)
{
    const NumberText number = scanNumber(text, false);
    std::int64_t value = 0;
    for (char c : number.digits) {
        value = value * 10 + (c - '0');
        if (value > std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1)
            break;
    }
    if (number.negative)
        value = -value;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

float readFloat(QStringView text)
{
    const NumberText number = scanNumber(text, true);
    if (number.digits.empty() || number.digits == ".")
        return 0.0f;
    double value = 0.0;
    const char* first = number.digits.data();
    const char* last = first + number.digits.size();
    const auto [ptr, ec] = std::from_chars(first, last, value);
    if (ec == std::errc::result_out_of_range) {
        // Too large, or too small: which one the integer digits tell.
        const bool large = number.digits.find_first_of("123456789") < number.digits.find('.');
        value = large ? std::numeric_limits<double>::infinity() : 0.0;
    }
    (void)ptr;
    if (value > double(std::numeric_limits<float>::max()))
        value = std::numeric_limits<double>::infinity();
    const float result = static_cast<float>(value);
    return number.negative ? -result : result;
}

namespace reference {

QStringList tagsFromLine(QStringView line)
{
    QStringList tags;
    QString work = line.toString();
    icu::RegexMatcher& m = matcher(kTimeTagPattern);
    for (;;) {
        const icu::UnicodeString input = alias(work);
        const Match match = find(m, input);
        if (!match)
            break;
        tags.append(work.mid(match.start, match.end - match.start));
        work.remove(match.start, match.end - match.start);
    }
    return tags;
}

QString contentFromLine(QStringView line)
{
    const Match match = find(matcher(kContentPattern), alias(line));
    if (!match)
        return QString(QLatin1String(""));
    return line.mid(match.end).toString();
}

} // namespace reference
} // namespace lrc
