// Tests of values as they are shown and typed.

#include "editor/model/control_meaning.h"

#include <gtest/gtest.h>

#include "softsynth/effects/mono_effect.h"
#include "softsynth/effects/stereo_effect.h"

namespace tarquil {

namespace {

class ControlMeaningTest : public testing::Test {
  protected:
    std::optional<int> typed(unsigned number, std::string_view text) {
        return parse_control(number, text, bytes);
    }
    ControllerBytes bytes = default_controller_bytes();
};

// Typing back what is shown leaves the sound as it is, whatever the effects' types are.
TEST_F(ControlMeaningTest, WhatIsShownMeansItself) {
    for (unsigned type = 0; type <= MonoEffect::MONO_EFFECT_EXCITER; type++) {
        bytes[CTRL_CHANFX1_TYPE] = bytes[CTRL_CHANFX1B_TYPE] = uint8_t(type);
        bytes[CTRL_CHANFX2_TYPE] = uint8_t(type % 4);
        for (const ControllerInfo& info : controller_rows()) {
            for (int byte = info.choices.first; byte <= info.choices.last; byte++) {
                bytes[info.number] = uint8_t(byte);
                const std::string shown = control_text(info.number, byte, bytes);
                const std::optional<int> meant = typed(info.number, shown);
                ASSERT_TRUE(meant) << info.key << " " << shown;
                EXPECT_EQ(control_text(info.number, *meant, bytes), shown) << info.key;
            }
            bytes[info.number] = default_controller_bytes()[info.number];
            bytes[CTRL_CHANFX1_TYPE] = bytes[CTRL_CHANFX1B_TYPE] = uint8_t(type);
            bytes[CTRL_CHANFX2_TYPE] = uint8_t(type % 4);
        }
    }
}

TEST_F(ControlMeaningTest, NumbersCountInTheUnitShownOrNamed) {
    bytes[CTRL_FILTER1_CUTOFF] = 100; // kHz
    EXPECT_EQ(typed(CTRL_FILTER1_CUTOFF, "1"), typed(CTRL_FILTER1_CUTOFF, " 1000 Hz "));
    EXPECT_EQ(typed(CTRL_FILTER1_CUTOFF, "1,0k"), typed(CTRL_FILTER1_CUTOFF, "1 kHz"));
    EXPECT_EQ(typed(CTRL_ENV1_ATTACK, "0.5 s"), typed(CTRL_ENV1_ATTACK, "500ms"));
    EXPECT_EQ(typed(CTRL_OSC1_COARSE_TUNE, "-12"), 52);
    EXPECT_EQ(typed(CTRL_OSC1_COARSE_TUNE, "1 semitone"), 65);
    EXPECT_EQ(typed(CTRL_MAIN_VOLUME, "-inf"), 0);
    EXPECT_EQ(typed(CTRL_MAIN_VOLUME, "+99 dB"), 127);
    EXPECT_EQ(typed(CTRL_FILTER1_CUTOFF, "99999 kHz"), 127);
    EXPECT_EQ(typed(CTRL_FILTER1_CUTOFF, "-5"), 0);
}

TEST_F(ControlMeaningTest, NonsenseMeansNothing) {
    for (const char* text : {"", " ", "abc", "5 apples", "nan", "--3", "k", "1e", "5 dB"})
        EXPECT_FALSE(typed(CTRL_FILTER1_CUTOFF, text)) << text;
    EXPECT_FALSE(typed(CTRL_OSC1_TYPE, "flute"));
    EXPECT_EQ(typed(CTRL_OSC1_TYPE, "SQ"), 3);
}

TEST_F(ControlMeaningTest, WhatIsSwitchedOffIsDimmed) {
    const auto is_used = [&](unsigned number) { return meaning_of(number, bytes).is_used; };
    EXPECT_FALSE(is_used(CTRL_FILTER1_CUTOFF));
    bytes[CTRL_FILTER1_TYPE] = 20;
    EXPECT_TRUE(is_used(CTRL_FILTER1_CUTOFF));
    EXPECT_FALSE(is_used(CTRL_FILTER1_DEPTH));
    EXPECT_FALSE(is_used(CTRL_CHAN_FILTER2_GAIN));
    bytes[CTRL_CHAN_FILTER2_TYPE] = FILTER_LOWPASS;
    EXPECT_TRUE(is_used(CTRL_CHAN_FILTER2_CUTOFF));
    EXPECT_FALSE(is_used(CTRL_CHAN_FILTER2_GAIN));
    EXPECT_FALSE(is_used(CTRL_ENV2_ATTACK));
    bytes[CTRL_AMPLITUDE_INFLUENCE_SOURCE] = 2;
    EXPECT_TRUE(is_used(CTRL_ENV2_ATTACK));
    bytes[CTRL_CHANFX2_TYPE] = StereoEffect::STEREO_EFFECT_DELAY;
    EXPECT_TRUE(is_used(CTRL_CHANFX2_PARAM3));
    EXPECT_FALSE(is_used(CTRL_CHANFX2_PARAM4));
}

} // namespace

} // namespace tarquil
