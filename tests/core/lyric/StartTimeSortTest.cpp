#include "core/lyric/StartTimeSort.h"
#include "core/lyric/Lyric.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <cmath>
#include <limits>

namespace {

std::vector<std::uint32_t> fastOrder(const std::vector<float>& starts)
{
    std::vector<lrc::StartTimeKey> keys;
    for (std::uint32_t i = 0; i < starts.size(); ++i)
        keys.push_back({starts[i], i});
    lrc::sortByStartTime(keys);
    std::vector<std::uint32_t> order;
    for (const auto& key : keys)
        order.push_back(key.position);
    return order;
}

struct Shape {
    const char* name;
    float (*next)(QRandomGenerator&, int i);
};

// The comparison is not a strict weak ordering, so the order depends on every merge the
// sort makes: only the same merges give the same answer. Mostly ascending text with lines
// repeated later, near neighbours, shuffled times, and the odd values are all tried.
class SortEquivalence : public ::testing::TestWithParam<Shape> {};

TEST_P(SortEquivalence, SameOrderAsTheStableMergeSort)
{
    QRandomGenerator random(20261123);
    for (int round = 0; round < 300; ++round) {
        const int n = int(random.bounded(1, 700));
        std::vector<float> starts;
        for (int i = 0; i < n; ++i)
            starts.push_back(GetParam().next(random, i));
        ASSERT_EQ(fastOrder(starts), lrc::reference::sortOrder(starts))
            << GetParam().name << " " << round;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, SortEquivalence,
    ::testing::Values(Shape{"song",
                            [](QRandomGenerator& r, int i) {
                                const float t = float(i) * 2.5f + float(r.generateDouble()) * 2.0f;
                                return r.bounded(10) == 0 ? t + 60.0f : t;
                            }},
                      Shape{"near", [](QRandomGenerator& r,
                                       int) { return float(r.generateDouble()) * 8.0f; }},
                      Shape{"shuffled", [](QRandomGenerator& r,
                                           int) { return float(r.bounded(4000)) / 10.0f - 50.0f; }},
                      Shape{"odd", [](QRandomGenerator& r, int i) {
                                constexpr float kInf = std::numeric_limits<float>::infinity();
                                const float odd[] = {kInf, -kInf, std::nanf(""), 3e9f, -3e9f, 0.5f};
                                return r.bounded(4) == 0 ? odd[r.bounded(6)] : float(i % 50);
                            }}));

TEST(SortEquivalence, ItemsHandedInAreOwnedAndSorted)
{
    std::vector<std::unique_ptr<LRCItem>> items;
    for (float start : {9.0f, 1.0f, 5.0f}) {
        items.push_back(std::make_unique<LRCItem>());
        items.back()->setStartTime(start);
        items.back()->setContent(QString::number(start));
    }
    items.push_back(nullptr);
    Lyric lyric;
    lyric.setLrcArray(std::move(items));
    lyric.sortLRCs();
    ASSERT_EQ(lyric.lines(), 3);
    EXPECT_EQ(lyric.contentsReadable(), QStringLiteral("1\n5\n9\n"));
    EXPECT_EQ(lyric.lrcArray()[1]->endTime(), 9.0f);
}

} // namespace
