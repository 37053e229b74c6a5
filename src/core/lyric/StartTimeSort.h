#pragma once

#include <cstdint>
#include <vector>

namespace lrc {

// An item's start time (offset included), read once before sorting, and its position in
// text order.
struct StartTimeKey {
    float start = 0.0f;
    std::uint32_t position = 0;
};

// Gives exactly the order that foundation::stableMergeSort gives with SortLRCItem (an
// ascending context): the same bottom-up merges, in the same order, on keys held in one
// array. A merge whose runs cannot interleave (no start time of the right run lies a whole
// second before one of the left run) leaves them where they are, and the leading part of a
// left run that nothing on the right goes before stays in place too.
void sortByStartTime(std::vector<StartTimeKey>& keys);

namespace reference {
// The positions of `starts` in the order of foundation::stableMergeSort with SortLRCItem:
// what sortByStartTime must give. For the tests and the fuzzer.
std::vector<std::uint32_t> sortOrder(const std::vector<float>& starts);
} // namespace reference

} // namespace lrc
