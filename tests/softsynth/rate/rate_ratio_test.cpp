// The ratio of two rates: exact for ever.

#include "softsynth/rate/rate_ratio.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace tarquil {
namespace {

TEST(RateRatio, IsInItsLowestTerms) {
    EXPECT_EQ(RateRatio::of(44100), (RateRatio{1, 1}));
    EXPECT_EQ(RateRatio::of(48000), (RateRatio{147, 160}));
    EXPECT_EQ(RateRatio::of(88200), (RateRatio{1, 2}));
    EXPECT_EQ(RateRatio::of(8000), (RateRatio{441, 80}));
    EXPECT_EQ(RateRatio::of(45678.9012), (RateRatio{44100000, 45678901}));
    EXPECT_EQ(RateRatio::of(384000)->host_frames, 1280U);
    for (const double rate :
         {0.0, -48000.0, 999.9, 768001.0, std::nan(""), std::numeric_limits<double>::infinity()})
        EXPECT_FALSE(RateRatio::of(rate)) << rate;
}

// Against arithmetic of 128 bits, up to years of frames.
TEST(RateRatio, PlacesAreExactAndTheNearestFrameIsNear) {
    __extension__ using Wide = __int128;
    std::mt19937_64 random(1);
    for (const double rate : {8000.0, 22050.0, 44099.999, 48000.0, 45678.901, 384000.0, 768000.0}) {
        const RateRatio ratio = *RateRatio::of(rate);
        for (int i = 0; i < 1000; i++) {
            const auto host = int64_t(random() >> (10 + random() % 50));
            const EnginePosition place = ratio.position(host);
            const Wide parts = Wide(host) * ratio.engine_frames;
            ASSERT_LT(place.phase, ratio.host_frames);
            ASSERT_TRUE(Wide(place.frame) * ratio.host_frames + place.phase == parts) << host;

            // Behind the start and in front of it the grid is the same.
            const EnginePosition before = ratio.position(host - int64_t(ratio.host_frames) * 1000);
            ASSERT_EQ(before.frame, place.frame - int64_t(ratio.engine_frames) * 1000);
            ASSERT_EQ(before.phase, place.phase);

            const Wide distance =
                Wide(ratio.engine_time(uint64_t(host))) * ratio.host_frames - parts;
            ASSERT_TRUE(2 * distance <= ratio.host_frames && -2 * distance < ratio.host_frames);

            const int64_t first = ratio.host_frame_from(place.frame);
            ASSERT_GE(ratio.position(first).frame, place.frame);
            ASSERT_LT(ratio.position(first - 1).frame, place.frame);
        }
    }
}

} // namespace
} // namespace tarquil
