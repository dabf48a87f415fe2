// What the engine shows of its last note.

#include <gtest/gtest.h>

#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/osc_type.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 256;

NoteView view(EngineHost& host, uint32_t mask) {
    return host->newest_note(mask, host.now - BLOCK, BLOCK);
}

TEST(NewestNote, IsTheLastOneOfTheChannelsAskedFor) {
    EngineHost host;
    for (const int channel : {1, 2})
        host.set_plain(channel, OSC_SINE);
    host.render(BLOCK);
    EXPECT_EQ(view(host, 0xFFFF).is_sounding, 0U);
    host.note_on(1, 60);
    host.note_on(2, 50, 127, 8);
    host.note_on(1, 64, 127, 4);
    host.render(BLOCK);
    EXPECT_EQ(view(host, 0xFFFF).note, 50U);
    EXPECT_EQ(view(host, 1U << 1).note, 64U);
    EXPECT_EQ(view(host, 1U << 3).is_sounding, 0U);
    host.note_off(2, 50);
    host.render(1024, BLOCK);
    EXPECT_EQ(view(host, 0xFFFF).note, 64U) << "the other has ended";
}

TEST(NewestNote, ShowsWhereItsModulationIs) {
    EngineHost host;
    host.set_plain(0, OSC_SAW);
    host.set(0, CTRL_LFO1_TYPE, OSC_SINE);
    host.set(0, CTRL_LFO1_SPEED, 100);
    host.set(0, CTRL_FILTER1_CUTOFF, 64);
    host.set(0, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_LFO1);
    host.set(0, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 80);
    host.render(BLOCK);
    host.note_on(0, 60);
    float lowest = 100.0F;
    float highest = -100.0F;
    for (int i = 0; i < 2 * SAMPLE_RATE / int(BLOCK); i++) {
        host.render(BLOCK, BLOCK);
        const NoteView shown = view(host, 1);
        EXPECT_LE(shown.lowest_cutoff, shown.cutoff);
        EXPECT_GE(shown.highest_cutoff, shown.cutoff);
        lowest = std::min(lowest, shown.lowest_cutoff);
        highest = std::max(highest, shown.highest_cutoff);
        // A sine that starts at its zero: above it in its first half.
        if (shown.lfo_phases[0] > 0.05F && shown.lfo_phases[0] < 0.45F) {
            EXPECT_GT(shown.cutoff, 5.04F) << shown.lfo_phases[0];
        }
        if (shown.lfo_phases[0] > 0.55F && shown.lfo_phases[0] < 0.95F) {
            EXPECT_LT(shown.cutoff, 5.04F) << shown.lfo_phases[0];
        }
    }
    // 64 steps of 10 / 127 octaves, and 16 of 10 / 128 octaves either way.
    EXPECT_NEAR((lowest + highest) / 2, 5.04, 0.02);
    EXPECT_NEAR(highest - lowest, 2.5, 0.02);
}

} // namespace

} // namespace tarquil
