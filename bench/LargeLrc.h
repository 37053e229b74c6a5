#pragma once

// A large, realistic LRC text made deterministically (the same bytes on every machine): a
// metadata header with an offset tag, mostly CJK lines with some Latin ones, a chorus line
// with two or three time tags now and then (sung again later, so the sort has to move it),
// timed blank pause lines, untimed blank lines between verses, and neighbours less than a
// second apart. Shared by the lyric benchmark and `lrc_generate`.

#include <cstdint>
#include <cstdio>
#include <string>

namespace bench {

// The 8 MiB case: 250,000 timed lines.
inline constexpr int kLargeTimedLines = 250000;

namespace detail {

// A fixed linear congruential generator: std::mt19937 would do, but the distributions are
// not the same across standard libraries.
class Lcg {
public:
    std::uint32_t next()
    {
        m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<std::uint32_t>(m_state >> 33);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<std::uint32_t>(n)); }

private:
    std::uint64_t m_state = 20261123;
};

inline void appendTag(std::string& out, long centiseconds)
{
    char tag[32];
    const int n = std::snprintf(tag, sizeof tag, "[%02ld:%02ld.%02ld]", centiseconds / 6000,
                                centiseconds / 100 % 60, centiseconds % 100);
    out.append(tag, static_cast<std::size_t>(n));
}

inline void appendCjkLine(std::string& out, Lcg& random)
{
    // Common characters of lyrics, three UTF-8 bytes each.
    static const char* const kCharacters[] = {
        "我", "你", "的", "爱", "在", "心", "里", "风", "雨", "夜", "梦", "光", "天", "海",
        "不", "是", "一", "个", "人", "走", "过", "时", "间", "想", "念", "说", "再", "见",
        "歌", "唱", "花", "开", "落", "春", "秋", "月", "星", "空", "远", "方", "回", "家"};
    const int count = 3 + random.below(8);
    for (int i = 0; i < count; ++i) {
        out += kCharacters[random.below(int(std::size(kCharacters)))];
        if (i == count / 2 && random.below(4) == 0)
            out += ' ';
    }
}

inline void appendLatinLine(std::string& out, Lcg& random)
{
    static const char* const kWords[] = {"love", "night", "the",  "you",   "and",  "heart",
                                         "rain", "we",    "were", "young", "home", "light",
                                         "oh",   "never", "say",  "again", "run",  "away"};
    const int count = 2 + random.below(5);
    for (int i = 0; i < count; ++i) {
        if (i)
            out += ' ';
        out += kWords[random.below(int(std::size(kWords)))];
    }
}

} // namespace detail

// `timedLines` lines that carry at least one time tag, about 34 bytes each on average.
inline std::string largeLrc(int timedLines = kLargeTimedLines)
{
    detail::Lcg random;
    std::string out = "[ti:Long Night Medley]\n[ar:Various]\n[al:Compilation]\n[by:bench]\n"
                      "[offset:+150]\n\n";
    long t = 1200; // centiseconds
    for (int line = 0; line < timedLines; ++line) {
        const int roll = random.below(100);
        if (roll < 6)
            out += '\n'; // untimed blank line between verses
        detail::appendTag(out, t);
        if (roll >= 90) {
            // A chorus line sung again one and (sometimes) two minutes later.
            detail::appendTag(out, t + 6000 + random.below(500));
            if (roll >= 96)
                detail::appendTag(out, t + 12000 + random.below(500));
        }
        if (roll >= 6 && roll < 10) {
            // a timed blank pause line
        } else if (roll < 80) {
            detail::appendCjkLine(out, random);
        } else {
            detail::appendLatinLine(out, random);
        }
        out += '\n';
        // Mostly 1.5 to 4.5 s apart; one step in twenty is under a second.
        t += random.below(20) == 0 ? 20 + random.below(80) : 150 + random.below(300);
    }
    return out;
}

} // namespace bench
