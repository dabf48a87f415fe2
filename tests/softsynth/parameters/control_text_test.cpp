// Tests of values as they are shown and typed.

#include "softsynth/parameters/control_text.h"

#include <gtest/gtest.h>

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"

namespace tarquil {

namespace {

class ControlTextTest : public testing::Test {
  protected:
    std::optional<int> typed(unsigned number, std::string_view text) {
        return parse_control(number, text, bytes);
    }
    ControllerBytes bytes = default_controller_bytes();
};

// Typing back what is shown leaves the sound as it is, whatever the effects' types are.
TEST_F(ControlTextTest, WhatIsShownMeansItself) {
    for (unsigned type = 0; type <= MONO_EFFECT_EXCITER; type++) {
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

TEST_F(ControlTextTest, NumbersCountInTheUnitShownOrNamed) {
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

TEST_F(ControlTextTest, MusiciansUnitsAreShownAndTyped) {
    const auto shown = [&](unsigned number, int byte) { return control_text(number, byte, bytes); };
    EXPECT_EQ(shown(CTRL_PANNING, 64), "C");
    EXPECT_EQ(shown(CTRL_PANNING, 0), "L 100");
    EXPECT_EQ(shown(CTRL_PANNING, 127), "R 100");
    EXPECT_EQ(typed(CTRL_PANNING, "30 L"), typed(CTRL_PANNING, "l30"));
    EXPECT_EQ(typed(CTRL_PANNING, "-30"),
              typed(CTRL_PANNING, "left 30").value_or(*typed(CTRL_PANNING, "30 left")));
    EXPECT_EQ(typed(CTRL_PANNING, "centre"), 64);
    EXPECT_EQ(typed(CTRL_PANNING, "200 r"), 127);
    EXPECT_FALSE(typed(CTRL_PANNING, "30 k"));
    EXPECT_EQ(shown(CTRL_OSC1_OSC2_MIX, 127), "100 %");
    EXPECT_EQ(typed(CTRL_OSC1_OSC2_MIX, "50"), typed(CTRL_OSC1_OSC2_MIX, "50%"));
    EXPECT_EQ(shown(CTRL_OSC2_FINE_TUNE, 65), "1.6 ct");
    EXPECT_EQ(typed(CTRL_OSC2_FINE_TUNE, "-50"), 32);
    EXPECT_EQ(typed(CTRL_OSC2_FINE_TUNE, "-0,5 st"), 32);
    EXPECT_EQ(shown(CTRL_LFO1_PHASE, 32), "90\u00b0");
    EXPECT_EQ(typed(CTRL_LFO1_PHASE, "180"), 64);
    EXPECT_FALSE(typed(CTRL_LFO1_PHASE, "5 %"));
    EXPECT_EQ(shown(CTRL_OSC1_INFLUENCE_AMOUNT, 126), "96.9 %");
    bytes[CTRL_CHANFX2_TYPE] = STEREO_EFFECT_DELAY;
    EXPECT_EQ(shown(CTRL_CHANFX2_PARAM3, 127), "90 %");
    bytes[CTRL_CHANFX2_TYPE] = STEREO_EFFECT_OFF;
    EXPECT_EQ(shown(CTRL_CHANFX2_PARAM3, 127), "127") << "a byte that means nothing";
}

TEST_F(ControlTextTest, NonsenseMeansNothing) {
    for (const char* text : {"", " ", "abc", "5 apples", "nan", "--3", "k", "1e", "5 dB"})
        EXPECT_FALSE(typed(CTRL_FILTER1_CUTOFF, text)) << text;
    EXPECT_FALSE(typed(CTRL_OSC1_TYPE, "flute"));
    EXPECT_EQ(typed(CTRL_OSC1_TYPE, "SQ"), 3);
}

// No number means that a slot multiplies, and the top of a setting means what acts there.
TEST_F(ControlTextTest, WordsForWhatIsNoNumber) {
    EXPECT_EQ(control_text(CTRL_OSC1_INFLUENCE_AMOUNT, 127, bytes), "multiplies");
    EXPECT_EQ(typed(CTRL_OSC1_INFLUENCE_AMOUNT, "Mult"), 127);
    EXPECT_EQ(typed(CTRL_OSC1_INFLUENCE_AMOUNT, "500"), 126);
    EXPECT_EQ(typed(CTRL_CUTOFF1_INFLUENCE1_AMOUNT, "inf"), 126);
    EXPECT_EQ(control_text(CTRL_FCMPR_BAND1_RATIO, 127, bytes), "inf:1");
    EXPECT_EQ(typed(CTRL_FCMPR_BAND1_RATIO, "inf:1"), 127);
    EXPECT_EQ(control_text(CTRL_AUX1_LEVEL, 5, bytes), "-inf dB");
    EXPECT_EQ(control_text(CTRL_AUX1_LEVEL, 6, bytes), "-79.5 dB");
}

} // namespace

} // namespace tarquil
