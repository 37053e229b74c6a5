#include "core/lyric/StartTimeSort.h"

#include "core/foundation/StableMergeSort.h"
#include "core/lyric/LRCItem.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

namespace lrc {
namespace {

// The merge takes from the right run exactly when compareStartTimes(right, left, ascending)
// answers Less, and that is exactly when right - left, rounded to float, is -1 or less: a
// difference in (-1, 1) truncates to 0 (same), one of 1 or more means right > left, and NaN
// reads as same and compares false here too. The tests hold the sort to SortLRCItem's order.
bool before(float right, float left)
{
    return right - left <= -1.0f;
}

// Bounds of one run of the current width. before(r, l) is monotone in both (the rounded
// difference only grows with r and shrinks with l), so when no start time is NaN and it does
// not hold for the right run's least start and the left run's greatest, it holds for no pair
// of the two runs.
struct Bounds {
    float least;
    float greatest;
};

} // namespace

void sortByStartTime(std::vector<StartTimeKey>& keys)
{
    const std::size_t n = keys.size();
    if (n < 2)
        return;
    // Start times the comparison sees as NaN-free make the shortcuts sound; a NaN (only ever
    // set from outside, never parsed) turns them off and every merge is done in full.
    const bool shortcuts = std::none_of(keys.begin(), keys.end(),
                                        [](const StartTimeKey& k) { return std::isnan(k.start); });
    std::vector<Bounds> bounds(n);
    for (std::size_t i = 0; i < n; ++i)
        bounds[i] = {keys[i].start, keys[i].start};
    std::vector<StartTimeKey> left;

    for (std::size_t width = 1; width < n; width *= 2) {
        std::size_t run = 0;
        for (std::size_t lo = 0; lo < n; lo += 2 * width, ++run) {
            const std::size_t mid = std::min(lo + width, n);
            const std::size_t hi = std::min(lo + 2 * width, n);
            const Bounds leftBounds = bounds[2 * run];
            if (mid == hi) {
                bounds[run] = leftBounds;
                continue;
            }
            const Bounds rightBounds = bounds[2 * run + 1];
            bounds[run] = {std::min(leftBounds.least, rightBounds.least),
                           std::max(leftBounds.greatest, rightBounds.greatest)};
            std::size_t i = lo;
            if (shortcuts) {
                if (!before(rightBounds.least, leftBounds.greatest))
                    continue; // the merge would put the left run and then the right one
                // Left keys that no right key goes before are taken first, as they stand.
                while (i < mid && !before(rightBounds.least, keys[i].start))
                    ++i;
            }
            // Merge the rest of the left run (moved aside) with the right run, into place.
            // Equal keys keep order: the right one is taken only when it must go first.
            left.assign(keys.begin() + std::ptrdiff_t(i), keys.begin() + std::ptrdiff_t(mid));
            std::size_t a = 0;
            std::size_t j = mid;
            std::size_t out = i;
            while (a < left.size() && j < hi) {
                if (before(keys[j].start, left[a].start))
                    keys[out++] = keys[j++];
                else
                    keys[out++] = left[a++];
            }
            while (a < left.size())
                keys[out++] = left[a++];
        }
    }
}

namespace reference {

std::vector<std::uint32_t> sortOrder(const std::vector<float>& starts)
{
    std::vector<std::unique_ptr<LRCItem>> items;
    for (const float start : starts) {
        items.push_back(std::make_unique<LRCItem>());
        items.back()->setStartTime(start);
    }
    std::vector<std::uint32_t> order(starts.size());
    for (std::uint32_t i = 0; i < order.size(); ++i)
        order[i] = i;
    const bool ascending = true;
    foundation::stableMergeSort(order, [&](std::uint32_t a, std::uint32_t b) {
        return SortLRCItem(*items[a], *items[b], &ascending) == LRCOrdering::Less;
    });
    return order;
}

} // namespace reference
} // namespace lrc
