// The laws of General MIDI against the engine's own curves.

#include "midi/gm/gm_laws.h"

#include <gtest/gtest.h>

#include <cmath>

#include "softsynth/parameters/controller_table.h"

namespace tarquil {
namespace {

double decibels(double gain) {
    return 20.0 * std::log10(gain);
}

double engine_gain(unsigned byte) {
    return std::pow(byte / 127.0, 3.0);
}

TEST(GmLaws, VolumeAndVelocityTogetherFollowFortyLog) {
    // A loud note's velocity repairs what the volume's byte rounds: within 0.2 dB down to -60 dB.
    for (unsigned volume = 4; volume <= 127; volume++) {
        const double exact = exact_volume(108, volume, 127, MAX_MASTER_VOLUME);
        const unsigned velocity =
            engine_velocity(100, VelocityLaw::SQUARE, volume_correction(exact));
        const double gain = engine_gain(volume_byte(exact)) * velocity / 127.0;
        const double law =
            decibels(engine_gain(108)) + 40.0 * std::log10(volume / 127.0 * 100.0 / 127.0);
        EXPECT_NEAR(decibels(gain), law, 0.2) << volume;
    }
    EXPECT_EQ(volume_byte(exact_volume(76, 127, 127, MAX_MASTER_VOLUME)), 76);
    EXPECT_EQ(volume_byte(exact_volume(76, 0, 127, MAX_MASTER_VOLUME)), 0);
    EXPECT_EQ(volume_byte(exact_volume(76, 127, 127, 0)), 0);
}

TEST(GmLaws, VelocityIsSquaredOnce) {
    for (unsigned v = 40; v <= 127; v++) {
        const double law = 40.0 * std::log10(v / 127.0);
        EXPECT_NEAR(decibels(engine_velocity(v, VelocityLaw::SQUARE, 1.0) / 127.0), law, 0.35) << v;
        const double squared = engine_velocity(v, VelocityLaw::LINEAR, 1.0) / 127.0;
        EXPECT_NEAR(2.0 * decibels(squared), law, 0.1) << v;
    }
    EXPECT_EQ(engine_velocity(1, VelocityLaw::SQUARE, 0.1), 1);
}

TEST(GmLaws, PanningHasEqualPowerFromOneTo127) {
    for (int v = 1; v <= 127; v++) {
        const double angle = std::acos(-1.0) / 2 * (v - 1) / 126.0;
        const double x = pan_byte(v) / 127.0;
        EXPECT_NEAR(x, std::sin(angle) * std::sin(angle), 0.5 / 127 + 1e-6) << v;
        if (v < 26 || v > 102)
            continue; // the softer side is 10 dB down, where a byte's step is coarse
        EXPECT_NEAR(decibels(std::sqrt(1.0 - x)), decibels(std::cos(angle)), 0.2) << v;
        EXPECT_NEAR(decibels(std::sqrt(x)), decibels(std::sin(angle)), 0.2) << v;
    }
    EXPECT_EQ(pan_byte(64), 64);
    EXPECT_EQ(pan_byte(0), 0);
    EXPECT_EQ(pan_byte(1), 0);
    EXPECT_EQ(pan_byte(127), 127);
    EXPECT_EQ(pan_byte(-30), 0);
    for (int v = 1; v <= 127; v += 9)
        EXPECT_NEAR(pan_value(pan_byte(v)), v, 3) << v;
    EXPECT_EQ(pan_value(64), 64); // a sound in the middle moves nothing
}

TEST(GmLaws, TimesScaleByAnEighthToEightTimes) {
    const auto seconds = [](uint8_t byte) {
        return std::pow(map_char_to_float(CTRL_ENV1_RELEASE, byte), 3.0F) / 44100.0F;
    };
    const uint8_t own = 60;
    EXPECT_EQ(scaled_time_byte(CTRL_ENV1_RELEASE, own, 64), own);
    EXPECT_NEAR(seconds(scaled_time_byte(CTRL_ENV1_RELEASE, own, 0)) / seconds(own), 0.125, 0.01);
    EXPECT_NEAR(seconds(scaled_time_byte(CTRL_ENV1_RELEASE, own, 96)) / seconds(own), 2.83, 0.1);
    EXPECT_EQ(scaled_time_byte(CTRL_ENV1_RELEASE, 100, 127), 127);
}

TEST(GmLaws, SendsFollowTheController) {
    EXPECT_EQ(reverb_byte(80, DEFAULT_REVERB), 80);
    EXPECT_EQ(reverb_byte(80, 0), 0);
    EXPECT_NEAR(engine_gain(reverb_byte(60, 80)) / engine_gain(60), 2.0, 0.05);
    EXPECT_GT(reverb_byte(0, DEFAULT_REVERB), 0); // a sound that names none
    EXPECT_EQ(chorus_byte(0), 0);
    EXPECT_NEAR(engine_gain(chorus_byte(127)), 0.5, 0.02);
}

} // namespace
} // namespace tarquil
