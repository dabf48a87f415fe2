// Level glides: every way ends where it should, in time and in steps of a straight direction.

#include "midi/gm/glide.h"

#include <gtest/gtest.h>

namespace tarquil {
namespace {

TEST(Glide, EndsAtItsTargetInOneDirection) {
    for (const auto& [from, to] :
         {std::pair(100, 40), std::pair(0, 127), std::pair(127, 0), std::pair(60, 62)}) {
        Glide glide;
        constexpr uint32_t START = 0xFFFFFFF0; // over the clock's end
        glide.start(START, uint8_t(from), uint8_t(to));
        int last = from;
        uint32_t last_time = START;
        int largest = 0;
        while (glide.is_active()) {
            const uint32_t time = *glide.due();
            EXPECT_TRUE(is_before(last_time, time));
            EXPECT_LE(time - START, Glide::LENGTH);
            const int value = glide.take_step();
            EXPECT_NE(value, last);
            EXPECT_EQ(value > last, to > from);
            largest = std::max(largest, std::abs(value - last));
            last = value;
            last_time = time;
        }
        EXPECT_EQ(last, to);
        // A steep middle: pi/2 times the average step.
        EXPECT_LE(largest, std::abs(to - from) * 1.6 / Glide::LENGTH + 1);
    }
    Glide still;
    still.start(10, 5, 5);
    EXPECT_FALSE(still.is_active());
}

} // namespace
} // namespace tarquil
