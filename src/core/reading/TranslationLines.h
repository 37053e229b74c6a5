#pragma once

#include <vector>

class Lyric;

// Finds the translation lines of a bilingual lyric. A line that repeats the time tags of the
// line before it in the text, and comes right after it, translates that line (three lines on
// one tag: an original and two lines under it). A line without text is never translated, and
// a run of more lines on one tag is not a bilingual layout (an unsynced lyric written with
// zero tags, say): it is left alone. The lyric's own lines and timeline are not touched.
namespace translation {

constexpr int kMaxLinesOnOneTag = 3;

// For each line of the lyric, the line it is shown with: itself, or the line it translates.
std::vector<int> owners(const Lyric& lyric);

} // namespace translation
