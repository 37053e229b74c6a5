#include "core/editor/PlayClock.h"

#include <gtest/gtest.h>

namespace {

TEST(PlayClock, RunsOnBetweenReadingsButNotFarPastThem)
{
    PlayClock clock;
    const struct {
        double position;
        qint64 now;
        double expected;
    } steps[] = {
        {10.0, 1000, 10.0},  // a first reading is taken as it is
        {10.0, 1100, 10.1},  // between readings: the time since the reading is added
        {10.2, 1200, 10.2},  // a new reading
        {10.2, 5000, 10.45}, // paused: at most a quarter second ahead
        {3.0, 5100, 3.0},    // a seek backwards
    };
    for (const auto& step : steps)
        EXPECT_DOUBLE_EQ(clock.at(step.position, step.now), step.expected) << step.now;
}

} // namespace
