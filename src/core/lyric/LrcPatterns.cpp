#include "core/lyric/LrcPatterns.h"

#include "core/lyric/LrcLineScanner.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace lrc {
namespace {

// Characters at which ICU's "." stops (besides the CR LF pair, made of two of them).
bool isLineTerminator(char16_t c)
{
    return c == 0x0A || c == 0x0B || c == 0x0C || c == 0x0D || c == 0x85 || c == 0x2028 ||
           c == 0x2029;
}

} // namespace

qsizetype digitRunEnd(const char16_t* s, qsizetype n, qsizetype at)
{
    qsizetype i = at;
    while (i < n) {
        const char16_t c = s[i];
        if (c < 0x80) {
            if (c < u'0' || c > u'9')
                break;
            ++i;
        } else if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(s[i + 1])) {
            if (!u_isdigit(UChar32(QChar::surrogateToUcs4(c, s[i + 1]))))
                break;
            i += 2;
        } else {
            if (!u_isdigit(c))
                break;
            ++i;
        }
    }
    return i;
}

// The match can only begin at the first "[" of a stretch between line terminators, and only
// if a "]" at least two characters further on the same stretch closes it (any later "[" of
// that stretch would need the same "]"). Blanks before the "[" move where the match starts,
// never where it ends: the greedy ".+" runs to the last "]" of the stretch.
qsizetype contentStart(QStringView line)
{
    const qsizetype n = line.size();
    qsizetype open = -1;
    qsizetype i = 0;
    for (; i < n; ++i) {
        const char16_t c = line[i].unicode();
        if (isLineTerminator(c))
            open = -1;
        else if (c == u'[' && open < 0)
            open = i;
        else if (c == u']' && open >= 0 && i >= open + 2)
            break;
    }
    if (i == n)
        return -1;
    qsizetype lastClose = i;
    for (; i < n && !isLineTerminator(line[i].unicode()); ++i) {
        if (line[i] == u']')
            lastClose = i;
    }
    return lastClose + 1;
}

QStringList tagsFromLine(QStringView line)
{
    LrcLineScanner scanner;
    scanner.scan(line);
    QStringList tags;
    tags.reserve(scanner.tagCount());
    for (qsizetype i = 0; i < scanner.tagCount(); ++i)
        tags.append(scanner.tag(i).toString());
    return tags;
}

QString contentFromLine(QStringView line)
{
    const qsizetype start = contentStart(line);
    if (start < 0)
        return QString(QLatin1String(""));
    return line.mid(start).toString();
}

std::optional<OffsetTag> findOffsetTag(QStringView text)
{
    // "\[offset:[+-]?\d+\]" cannot backtrack into a different match: the first "[offset:"
    // followed by an optional sign, digits and "]" is the first match. Inside it, the first
    // match of "[+-]?\d+" is that sign and those digits.
    constexpr QStringView prefix = u"[offset:";
    const auto* s = reinterpret_cast<const char16_t*>(text.utf16());
    const qsizetype n = text.size();
    for (qsizetype at = text.indexOf(prefix); at >= 0; at = text.indexOf(prefix, at + 1)) {
        const qsizetype number = at + prefix.size();
        qsizetype i = number;
        if (i < n && (s[i] == u'+' || s[i] == u'-'))
            ++i;
        const qsizetype end = digitRunEnd(s, n, i);
        if (end == i || end >= n || s[end] != u']')
            continue;
        return OffsetTag{text.mid(at, end + 1 - at).toString(),
                         readInt32(text.mid(number, end - number))};
    }
    return std::nullopt;
}

namespace {

// A number as the format reads it: leading blanks, an optional sign, ASCII digits and (for
// a float) at most one ".".
struct NumberText {
    bool negative = false;
    const char16_t* first = nullptr; // the digits and the dot
    const char16_t* last = nullptr;
    int digitCount = 0;
    int fractionDigits = 0;
};

NumberText scanNumber(QStringView text, bool allowFraction)
{
    const auto* p = reinterpret_cast<const char16_t*>(text.utf16());
    const auto* const end = p + text.size();
    while (p != end && QChar::isSpace(*p))
        ++p;
    NumberText result;
    if (p != end && (*p == u'+' || *p == u'-')) {
        result.negative = *p == u'-';
        ++p;
    }
    result.first = p;
    bool seenDot = false;
    for (; p != end; ++p) {
        if (*p >= u'0' && *p <= u'9') {
            ++result.digitCount;
            result.fractionDigits += seenDot;
        } else if (*p == u'.' && allowFraction && !seenDot) {
            seenDot = true;
        } else {
            break;
        }
    }
    result.last = p;
    return result;
}

// Powers of ten that are exact in a double.
constexpr double kExactPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

} // namespace

std::int32_t readInt32(QStringView text)
{
    const NumberText number = scanNumber(text, false);
    std::int64_t value = 0;
    for (const char16_t* p = number.first; p != number.last; ++p) {
        value = value * 10 + (*p - u'0');
        if (value > std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1)
            break;
    }
    if (number.negative)
        value = -value;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

namespace {
// The double nearest to mantissa / 10^fractionDigits, as the decimal conversion gives it:
// both operands are exact (mantissa below 10^15 < 2^53) and the division rounds correctly.
double exactDecimal(std::uint64_t mantissa, int fractionDigits)
{
    return double(mantissa) / kExactPowers[fractionDigits];
}

bool isAsciiDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}
} // namespace

bool readUsualTagTime(QStringView inner, std::int32_t& minute, float& second)
{
    const auto* p = reinterpret_cast<const char16_t*>(inner.utf16());
    const auto* const end = p + inner.size();
    std::int32_t minutes = 0;
    const auto* const minutesStart = p;
    for (; p != end && isAsciiDigit(*p) && p - minutesStart < 9; ++p)
        minutes = minutes * 10 + (*p - u'0');
    if (p == minutesStart || p == end || *p != u':')
        return false;
    ++p;
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fractionDigits = 0;
    bool seenDot = false;
    for (; p != end; ++p) {
        if (isAsciiDigit(*p)) {
            mantissa = mantissa * 10 + std::uint64_t(*p - u'0');
            ++digits;
            fractionDigits += seenDot;
        } else if (*p == u'.' && !seenDot && digits > 0) {
            seenDot = true;
        } else {
            return false;
        }
    }
    if (digits == 0 || digits > 15)
        return false;
    minute = minutes;
    second = static_cast<float>(exactDecimal(mantissa, fractionDigits));
    return true;
}

float readFloat(QStringView text)
{
    const NumberText number = scanNumber(text, true);
    if (number.digitCount == 0)
        return 0.0f;
    double value = 0.0;
    if (number.digitCount <= 15) {
        // What the full conversion below gives too.
        std::uint64_t mantissa = 0;
        for (const char16_t* p = number.first; p != number.last; ++p) {
            if (*p != u'.')
                mantissa = mantissa * 10 + std::uint64_t(*p - u'0');
        }
        value = exactDecimal(mantissa, number.fractionDigits);
    } else {
        const std::string digits(number.first, number.last);
        const auto [ptr, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        (void)ptr;
        if (ec == std::errc::result_out_of_range) {
            // Too large, or too small: which one the integer digits tell.
            const bool large = digits.find_first_of("123456789") < digits.find('.');
            value = large ? std::numeric_limits<double>::infinity() : 0.0;
        }
    }
    if (value > double(std::numeric_limits<float>::max()))
        value = std::numeric_limits<double>::infinity();
    const float result = static_cast<float>(value);
    return number.negative ? -result : result;
}

} // namespace lrc
