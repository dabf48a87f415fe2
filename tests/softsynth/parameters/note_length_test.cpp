// Tests of note lengths: which one a byte stands for, and how it is shown and typed.

#include "softsynth/parameters/note_length.h"

#include <gtest/gtest.h>

#include "softsynth/parameters/control_text.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

TEST(NoteLength, ABytesLengthIsTheNearestToItsTimeAt120) {
    ControllerBytes bytes = default_controller_bytes();
    const auto name = [&](unsigned number, int byte) {
        const NoteLength* length = followed_length(number, byte, bytes);
        return std::string(length != nullptr ? length->name : "none");
    };
    // 0.01 s, 0.2516 s, 1 s
    EXPECT_EQ(name(CTRL_DELAY_LEFT_TIME, 0), "1/32 T");
    EXPECT_EQ(name(CTRL_DELAY_LEFT_TIME, 31), "1/8");
    EXPECT_EQ(name(CTRL_DELAY_RIGHT_TIME, 127), "1/2");
    // 60, 120 and 187 beats a minute
    EXPECT_EQ(name(CTRL_RETRIGGER_BPM, 0), "1/2");
    EXPECT_EQ(name(CTRL_RETRIGGER_BPM, 60), "1/4");
    EXPECT_EQ(name(CTRL_RETRIGGER_BPM, 127), "1/4 T");
    // A millionth of a hertz, and 2.03 Hz
    EXPECT_EQ(name(CTRL_LFO1_SPEED, 0), "4/1 D");
    EXPECT_EQ(name(CTRL_LFO1_SPEED, 59), "1/4");
    // What an effect's parameter is depends on its type.
    const EffectRows& rows = STEREO_EFFECT_ROWS;
    EXPECT_EQ(name(rows.parameter(0), 31), "none");
    bytes[rows.type] = STEREO_EFFECT_DELAY;
    EXPECT_EQ(name(rows.parameter(1), 31), "1/8");
    EXPECT_EQ(name(rows.parameter(2), 31), "none");
    bytes[rows.type] = STEREO_EFFECT_FLANGER;
    EXPECT_EQ(name(rows.parameter(0), 31), "none");
    EXPECT_EQ(name(rows.parameter(1), 0), "none"); // it stands still
    EXPECT_EQ(name(rows.parameter(1), 88), "1/4");
    EXPECT_EQ(name(CTRL_MAIN_VOLUME, 64), "none");
}

TEST(NoteLength, TextsShowAndTakeLengthsOnlyWhatFollows) {
    const ControllerBytes bytes = default_controller_bytes();
    const auto text = [&](unsigned number, int byte) {
        return control_text(number, byte, bytes, true);
    };
    EXPECT_EQ(text(CTRL_DELAY_LEFT_TIME, 31), "1/8");
    EXPECT_EQ(control_text(CTRL_DELAY_LEFT_TIME, 31, bytes), "252 ms");
    EXPECT_EQ(text(CTRL_MAIN_VOLUME, 100), control_text(CTRL_MAIN_VOLUME, 100, bytes));
    for (const unsigned number : {unsigned(CTRL_DELAY_LEFT_TIME), unsigned(CTRL_LFO2_SPEED),
                                  unsigned(CTRL_RETRIGGER_BPM)}) {
        for (int byte = 0; byte < 128; byte++) {
            const auto meant = parse_control(number, text(number, byte), bytes, true);
            ASSERT_TRUE(meant) << text(number, byte);
            EXPECT_EQ(text(number, *meant), text(number, byte));
        }
    }
    for (const char* typed : {"1/8 D", "1/8d", " 1/8 d", "1/8."})
        EXPECT_EQ(
            text(CTRL_LFO1_SPEED, parse_control(CTRL_LFO1_SPEED, typed, bytes, true).value_or(0)),
            "1/8 D")
            << typed;
    // Its own unit still goes; a length that no byte has, or without a tempo, does not.
    EXPECT_EQ(parse_control(CTRL_DELAY_LEFT_TIME, "252 ms", bytes, true), 31);
    EXPECT_EQ(parse_control(CTRL_DELAY_LEFT_TIME, "4/1", bytes, true), std::nullopt);
    EXPECT_EQ(parse_control(CTRL_DELAY_LEFT_TIME, "1/8 T", bytes), std::nullopt);
}

} // namespace

} // namespace tarquil
