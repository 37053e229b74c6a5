#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>
#include <optional>

// The LRC grammar. The patterns below are in ICU syntax, and ICU's meaning of \d, \s and "."
// is the one the format relies on. The functions match them with hand-written scanners that
// use ICU's character data for \d; the reference versions run the patterns through ICU's
// regular expression engine, and the tests and the fuzzer check the two against each other.
namespace lrc {

// The patterns as the format defines them.
inline constexpr char16_t kOffsetPattern[] = u"\\[offset:[+-]?\\d+\\]";
inline constexpr char16_t kOffsetNumberPattern[] = u"[+-]?\\d+";
inline constexpr char16_t kTimeTagPattern[] = u"\\[\\d+:\\d+\\.?\\d*\\]";
inline constexpr char16_t kContentPattern[] = u"\\s*\\[.+\\]";

// Time tags in order of position, each cut out of the line before the next search, so that
// a tag that forms only after a removal is found too.
QStringList tagsFromLine(QStringView line);
// Everything after the first match of kContentPattern, untrimmed; empty when none.
QString contentFromLine(QStringView line);
// Where that text begins; -1 when there is no match.
qsizetype contentStart(QStringView line);
// The first offset tag anywhere in the text, and the signed milliseconds it holds.
struct OffsetTag {
    QString text;
    std::int32_t milliseconds = 0;
};
std::optional<OffsetTag> findOffsetTag(QStringView text);

// The end of the run of decimal digits ("\d": any Unicode decimal digit, a supplementary one
// being two UTF-16 units) that starts at s[at]; `at` itself when there is none.
qsizetype digitRunEnd(const char16_t* s, qsizetype n, qsizetype at);

// Number readers with the semantics of the format's integer and float reads: leading blanks,
// an optional sign, ASCII digits; an integer saturates at the 32-bit limits, a float that is
// too large reads as infinity; no digits read as 0.
std::int32_t readInt32(QStringView text);
float readFloat(QStringView text);
// The inside of the usual tag, "mm:ss.xx" in ASCII digits (up to 9 for the minutes, 15 for
// the seconds), read in one pass with the results of readInt32 and readFloat on its two
// parts; false, and nothing read, for anything else.
bool readUsualTagTime(QStringView inner, std::int32_t& minute, float& second);

// Straightforward versions, running the patterns exactly as written through ICU's regular
// expression engine and deleting each tag before searching again from the start. Quadratic
// on hostile lines; the fuzzer and the tests check the functions above against them.
namespace reference {
QStringList tagsFromLine(QStringView line);
QString contentFromLine(QStringView line);
std::optional<OffsetTag> findOffsetTag(QStringView text);
} // namespace reference

} // namespace lrc
