#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace foundation {

// A bottom-up merge sort that is stable and stays within bounds whatever the comparison
// answers: it needs no strict weak ordering, so a tolerant or inconsistent comparison can
// only make the order odd, never make the sort misbehave. `before(a, b)` is true when a must
// be placed ahead of b.
template <typename T, typename Before> void stableMergeSort(std::vector<T>& items, Before before)
{
    const std::size_t n = items.size();
    if (n < 2)
        return;
    std::vector<T> scratch(n);
    for (std::size_t width = 1; width < n; width *= 2) {
        for (std::size_t lo = 0; lo < n; lo += 2 * width) {
            const std::size_t mid = std::min(lo + width, n);
            const std::size_t hi = std::min(lo + 2 * width, n);
            std::size_t i = lo, j = mid, out = lo;
            while (i < mid && j < hi) {
                // Take from the right run only when it must go first: equal items keep order.
                if (before(items[j], items[i]))
                    scratch[out++] = std::move(items[j++]);
                else
                    scratch[out++] = std::move(items[i++]);
            }
            while (i < mid)
                scratch[out++] = std::move(items[i++]);
            while (j < hi)
                scratch[out++] = std::move(items[j++]);
        }
        items.swap(scratch);
    }
}

} // namespace foundation
