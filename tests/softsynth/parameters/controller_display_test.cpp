// Tests of the values that people read.

#include "softsynth/parameters/controller_display.h"

#include <gtest/gtest.h>

#include <set>

#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

TEST(ControllerDisplay, EveryUnitAndChoiceHasItsForm) {
    struct Case {
        unsigned number;
        int byte;
        const char* shown;
    };
    const Case cases[] = {
        {CTRL_MAIN_VOLUME, 0, "-inf dB"},
        {CTRL_MAIN_VOLUME, 127, "0.0 dB"},
        {CTRL_MAIN_VOLUME, 64, "-17.9 dB"}, // 60 log10(64 / 127)
        {CTRL_CHAN_FILTER1_GAIN, 0, "-20.0 dB"},
        {CTRL_FCMPR_PRE_GAIN, 80, "0.0 dB"}, // just below 1
        {CTRL_FILTER1_CUTOFF, 0, "20.0 Hz"},
        {CTRL_FILTER1_CUTOFF, 127, "20.5 kHz"}, // ten octaves
        {CTRL_FILTER1_RESONANCE, 127, "Q 7.50"},
        {CTRL_ENV1_ATTACK, 0, "0.02 ms"}, // one sample
        {CTRL_ENV1_ATTACK, 127, "2.00 s"},
        {CTRL_PORTAMENTO_TIME, 127, "1.00 s"},
        {CTRL_DELAY_LEFT_TIME, 0, "10.0 ms"},
        {CTRL_OSC1_COARSE_TUNE, 52, "-12 semitones"},
        {CTRL_OSC1_COARSE_TUNE, 65, "1 semitone"},
        {CTRL_OSC1_MULTI_COUNT, 0, "1 copy"},
        {CTRL_OSC1_MULTI_COUNT, 127, "255 copies"},
        {CTRL_FCMPR_BAND1_RATIO, 126, "62.87:1"},
        {CTRL_FCMPR_BAND1_RATIO, 127, "inf:1"}, // above 63 it limits
        {CTRL_RETRIGGER_BPM, 0, "60 bpm"},
        {CTRL_OSC1_RANDOMIZE_PHASE, 7, "7"},
        {CTRL_OSC1_TYPE, 5, "noise"},
        {CTRL_OSC1_TYPE, 6, "6"},
        {0, 77, "77"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(controller_display(c.number, c.byte), c.shown);
}

TEST(ControllerDisplay, NeighbouringBytesOfPlainNumbersLookDifferent) {
    for (const ControllerInfo& info : controller_rows()) {
        if (info.unit == Unit::LEVEL || info.unit == Unit::SECONDS || info.unit == Unit::SAMPLES ||
            info.unit == Unit::HERTZ || info.unit == Unit::RATIO ||
            info.curve == ControllerCurve::CUBED)
            continue; // their steps may be finer than anyone hears
        std::set<std::string> seen;
        for (int byte = 0; byte < 128; byte++)
            seen.insert(controller_display(info.number, byte));
        EXPECT_EQ(seen.size(), 128U) << info.key;
    }
}

} // namespace

} // namespace tarquil
