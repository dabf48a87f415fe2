// Voices: tuning, and what they share; golden scenes have their modulation.

#include "softsynth/voices/voice.h"

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr uint32_t LENGTH = 32768;

double note_hz(double note) {
    return 440 * std::exp2((note - 69) / 12);
}

TEST(Voice, IsInTuneOverTheWholeRange) {
    for (const int note : {24, 45, 69, 93, 108}) {
        EngineHost host;
        host.set_plain(0, OSC_SINE);
        host.note_on(0, note);
        const std::vector<float> sound = side(host.render(LENGTH), 0);
        const double level = amplitude_at(sound, note_hz(note));
        EXPECT_GT(level, 0.02) << note;
        // A third of a bin off on either side must be quieter, and by the same amount: the pitch is
        // within a fraction of a cent above the lowest notes.
        const double bin = 44100.0 / LENGTH;
        const double below = amplitude_at(sound, note_hz(note) - bin / 3);
        const double above = amplitude_at(sound, note_hz(note) + bin / 3);
        EXPECT_LT(below, level) << note;
        EXPECT_NEAR(below, above, level * 0.02) << note;
    }
}

TEST(Voice, TakesNothingFromAnotherVoicesScratch) {
    // A note that starts inside a block, modulated by an oscillator and an LFO, sounds the same
    // whatever has been rendered into the shared scratch before.
    const auto play_after = [](bool other_first) {
        EngineHost host;
        if (other_first) {
            host.note_on(1, 40);
            host.set(1, CTRL_MAIN_VOLUME, 0);
            host.set(1, CTRL_FILTER1_TYPE, FILTER_LADDER_START_MARKER);
            host.render(512);
        }
        EngineHost fresh;
        fresh.set_plain(0, OSC_SINE);
        fresh.set(0, CTRL_OSC2_INFLUENCE_SOURCE, INFL_OSC1);
        fresh.set(0, CTRL_OSC2_INFLUENCE_AMOUNT, 90);
        fresh.set(0, CTRL_OSC1_OSC2_MIX, 127);
        fresh.set(0, CTRL_RESONANCE1_INFLUENCE_SOURCE, INFL_LFO2);
        fresh.set(0, CTRL_RESONANCE1_INFLUENCE_AMOUNT, 100);
        fresh.set(0, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_OSC2);
        fresh.set(0, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 80);
        fresh.set(0, CTRL_FILTER1_TYPE, FILTER_LOWPASS);
        fresh.set(0, CTRL_FILTER1_DEPTH, 1);
        fresh.note_on(0, 69, 127, 101);
        return fresh.render(1024);
    };
    EXPECT_EQ(play_after(false), play_after(true));
}

} // namespace

} // namespace tarquil
