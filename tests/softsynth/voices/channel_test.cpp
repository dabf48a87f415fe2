// Channels and the voice pool: stealing, releasing, silence.

#include "softsynth/voices/channel.h"

#include <gtest/gtest.h>

#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

int voices_used(EngineHost& host) {
    return host->get_voice_pool().voices_used();
}

TEST(Channel, MaximumOfVoicesCutsTheOldestWithin32Samples) {
    EngineHost host;
    host.set(0, CTRL_CHAN_MAX_VOICES, 1);
    host.note_on(0, 60);
    host.render(64);
    host.note_on(0, 67);
    host.render(16);
    EXPECT_EQ(voices_used(host), 2) << "the cut voice still fades";
    host.note_on(0, 72);
    host.render(16);
    EXPECT_EQ(voices_used(host), 2) << "the first has ended at its 32nd sample, the second fades";
    host.render(32);
    EXPECT_EQ(voices_used(host), 1);
}

TEST(Channel, NoteOffOfAStolenNoteDoesNotReleaseItsSuccessor) {
    EngineHost host;
    host.set_plain(0, OSC_SAW);
    host.set(0, CTRL_CHAN_MAX_VOICES, 1);
    host.note_on(0, 60);
    host.render(64);
    host.note_on(0, 67); // cuts 60, takes voice 1
    host.render(64);
    host.note_on(0, 72); // cuts 67, takes voice 0, which was 60's
    host.render(64);
    host.note_off(0, 60);
    host.render(4096);
    EXPECT_EQ(voices_used(host), 1);
    host.note_off(0, 72);
    host.render(64);
    EXPECT_EQ(voices_used(host), 0);
}

TEST(Channel, FullPoolDropsNotesAndRecovers) {
    EngineHost host;
    for (int i = 0; i < 120; i++)
        host.note_on(i % 16, 30 + i / 16);
    host.render(64);
    EXPECT_EQ(voices_used(host), 96);
    for (int i = 0; i < 120; i++)
        host.note_off(i % 16, 30 + i / 16);
    host.render(44100);
    EXPECT_EQ(voices_used(host), 0);
    host.note_on(0, 60);
    host.note_off(1, 99); // has no voice
    EXPECT_GT(peak(host.render(256)), 0.0F);
}

TEST(Channel, EffectTailsStopTwoSecondsAfterTheLastVoice) {
    EngineHost host;
    host.set_plain(0, OSC_SAW);
    host.set(0, CTRL_CHANFX2_TYPE, 1); // delay of 1 s with feedback
    host.set(0, CTRL_CHANFX2_PARAM1, 127);
    host.set(0, CTRL_CHANFX2_PARAM2, 127);
    host.set(0, CTRL_CHANFX2_PARAM3, 127);
    host.note_on(0, 60);
    host.note_off(0, 60, 2000);
    host.render(2304);
    EXPECT_GT(peak(host.render(88064)), 0.01F);
    host.render(8192); // across the limit, and until the master's high-passes have rung out
    EXPECT_LT(peak(host.render(88064)), 1e-4F);
}

} // namespace

} // namespace tarquil
