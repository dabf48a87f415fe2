// Tests of how a meter moves.

#include "editor/kit/level_meter.h"

#include <gtest/gtest.h>

namespace tarquil {

namespace {

constexpr unsigned LEFT = 0;
constexpr unsigned RIGHT = 1;

TEST(LevelMeter, EachSideRisesAtOnceAndFallsSlowly) {
    LevelMeter meter;
    meter.update({0.5F, 0.1F}, 0.02);
    EXPECT_NEAR(meter.get_level(LEFT), -6.02, 0.01);
    EXPECT_NEAR(meter.get_level(RIGHT), -20, 0.01);
    meter.update({0.0F, 0.5F}, 0.5);
    EXPECT_NEAR(meter.get_level(LEFT), -6.02 - 12, 0.01) << "24 dB a second";
    EXPECT_NEAR(meter.get_level(RIGHT), -6.02, 0.01);
    meter.update({0.0F, 0.0F}, 100);
    EXPECT_EQ(meter.get_level(LEFT), LevelMeter::QUIETEST);
}

TEST(LevelMeter, HoldsThePeakForAWhileThenLetsItFall) {
    LevelMeter meter;
    meter.update({1.0F, 0.0F}, 0.02);
    meter.update({0.01F, 0.0F}, 1.0);
    meter.update({0.01F, 0.0F}, 0.4);
    EXPECT_EQ(meter.get_hold(LEFT), 0.0);
    meter.update({0.01F, 0.0F}, 0.2);
    EXPECT_NEAR(meter.get_hold(LEFT), -0.2 * 24, 0.01) << "1.5 s are over";
    meter.update({0.5F, 0.0F}, 0.2);
    EXPECT_NEAR(meter.get_hold(LEFT), -6.02, 0.01) << "down to the level";
    meter.update({1.0F, 0.0F}, 0.2);
    meter.update({0.0F, 0.0F}, 1.4);
    EXPECT_EQ(meter.get_hold(LEFT), 0.0) << "a new peak is held as long";
    meter.update({0.1F, 0.0F}, 100);
    EXPECT_NEAR(meter.get_hold(LEFT), -20, 0.01) << "not below the level";
}

TEST(LevelMeter, TellsTheHighestPeakOfTheLastSeconds) {
    LevelMeter meter;
    meter.update({0.5F, 0.9F}, 0.02);
    meter.update({0.6F, 0.1F}, LevelMeter::PEAK_SECONDS - 0.1);
    EXPECT_NEAR(meter.get_peak(), -0.92, 0.01) << "of both sides";
    meter.update({0.01F, 0.001F}, 0.2);
    EXPECT_NEAR(meter.get_peak(), -40, 0.01) << "the old one is too old";
    meter.update({0.0F, 0.0001F}, 10);
    EXPECT_NEAR(meter.get_peak(), -80, 0.01) << "below the scale as well";
}

TEST(LevelMeter, TheClipLightStaysOnUntilItIsPutOut) {
    for (const auto& peaks : {std::array{1.0F, 0.0F}, {0.0F, 1.0F}}) {
        LevelMeter meter;
        meter.update({0.999F, 0.999F}, 0.02);
        EXPECT_FALSE(meter.is_clipped());
        meter.update(peaks, 0.02);
        meter.update({0.0F, 0.0F}, 100);
        EXPECT_TRUE(meter.is_clipped());
        meter.clear_clip();
        EXPECT_FALSE(meter.is_clipped());
    }
}

} // namespace

} // namespace tarquil
