// Slopes give the bits of one addition after the other.

#include "softsynth/signal/slope.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {
namespace {

void expect_plain_sums(float value, float step, uint32_t count) {
    std::vector<float> line(count + 1, 7.0F);
    render_slope(line.data(), count, value, step);
    std::vector<float> expected;
    for (float sum = value; expected.size() < count; sum += step)
        expected.push_back(sum);
    expected.push_back(7.0F);
    EXPECT_EQ(std::memcmp(line.data(), expected.data(), line.size() * sizeof(float)), 0)
        << value << " by " << step << ", " << count << " times";
}

TEST(Slope, RoundsAsOneAdditionAfterTheOther) {
    const FlushToZero flush_to_zero;
    std::mt19937 random(1);
    std::uniform_real_distribution<float> part(-1.0F, 1.0F);
    for (int trial = 0; trial < 20000; trial++) {
        const float value = std::ldexp(part(random), int(random() % 40) - 30);
        const float step = std::ldexp(part(random), -int(random() % 40));
        expect_plain_sums(value, step, uint32_t(random() % 130));
    }
    // Half a unit in the last place more or less than some: rounds now up, now down.
    for (const float units : {0.5F, 1.5F, 2.5F, 0.75F, 0.25F, 0.0F}) {
        for (const float sign : {1.0F, -1.0F})
            expect_plain_sums(0.7F, sign * units * 0x1p-24F, 100);
    }
    // Past 0, where a unit is flushed to 0, and where sums are no numbers.
    for (const float value : {0.0F, -0.0F, 0x1p-126F, 0x1p-104F, 3e38F, INFINITY})
        for (const float step : {0x1p-125F, -0x1p-126F, 0x1p-128F, -0x1p-110F, 1e37F})
            expect_plain_sums(value, step, 40);
}

} // namespace
} // namespace tarquil
