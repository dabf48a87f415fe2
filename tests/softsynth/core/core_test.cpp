// The engine: preconditions, event placement, master chain, survival.

#include "softsynth/core/core.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

TEST(CoreDeathTest, PreconditionsAbort) {
    EngineHost host;
    static float pcm[2 * MAX_NUM_SAMPLES];
    const midi_event none;
    host->run(pcm, 2048, &none, 0, 0);
    EXPECT_DEATH(host->run(pcm, 2052, &none, 0, 2048), "num_samples <= MAX_NUM_SAMPLES");
    EXPECT_DEATH(host->run(pcm, 6, &none, 0, 2048), "\\(num_samples & \\(GRANULARITY-1\\)\\) == 0");
    EXPECT_DEATH(host->run(pcm, 0, &none, 0, 2048), "num_samples > 0");
    EXPECT_DEATH(host->run(nullptr, 4, &none, 0, 2048),
                 "Assert failure at softsynth/core/core.cpp:[0-9]+: pcm_out");
    EXPECT_DEATH(host->run(pcm, 4, nullptr, 0, 2048), ": mid");
}

TEST(Core, NotesStartOnTheirSample) {
    for (const uint32_t offset : {0U, 1U, 7U, 32U, 255U, 256U, 300U}) {
        EngineHost host;
        host.set_plain(0, OSC_SAW);
        host.render(4);
        host.note_on(0, 60, 127, offset);
        const std::vector<float> sound = host.render(512);
        for (uint32_t i = 0; i < offset; i++)
            ASSERT_EQ(sound[size_t(2) * i], 0.0F) << "offset " << offset << ", frame " << i;
        EXPECT_NE(sound[size_t(2) * offset], 0.0F) << offset;
    }
}

TEST(Core, SameInputGivesTheSameBits) {
    const auto play = [](uint32_t seed) {
        EngineHost host;
        host->seed_phases(seed);
        host.set(0, CTRL_OSC1_RANDOMIZE_PHASE, 127);
        host.set(0, CTRL_OSC1_MULTI_COUNT, 3);
        host.set(0, CTRL_OSC1_SPREAD, 60);
        host.note_on(0, 60);
        host.note_on(0, 64, 90, 100);
        return host.render(4096);
    };
    EXPECT_EQ(play(1), play(1));
    EXPECT_NE(play(1), play(2));
}

TEST(Core, RepeatedNoteReleasesTheSoundingOne) {
    EngineHost host;
    host.note_on(3, 60);
    host.render(256);
    host.note_on(3, 60);
    host.render(256);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 2) << "the first note is in its release";
    host.render(44100);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 1);
}

TEST(Core, LoudSoundIsClippedToOne) {
    EngineHost host;
    host.set(0, CTRL_MAIN_VOLUME, 127);
    host.set(0, CTRL_FCMPR_PRE_GAIN, 127);
    for (int note = 36; note < 96; note += 3)
        host.note_on(0, note);
    const std::vector<float> sound = host.render(8192);
    EXPECT_EQ(peak(sound), 1.0F);
    EXPECT_TRUE(is_sound(sound));
}

TEST(Core, ChannelTapsHoldEachChannelsSoundAlone) {
    static StereoBuffer taps[NUM_CHANNELS];
    EngineHost host;
    host->set_channel_taps(taps);
    host.note_on(2, 60);
    host.note_on(9, 67);
    host.render(256);
    EXPECT_GT(std::fabs(taps[2].get_first_left_sample_ptr()[100]), 0.0F);
    EXPECT_GT(std::fabs(taps[9].get_first_left_sample_ptr()[100]), 0.0F);
    EXPECT_EQ(taps[0].get_first_left_sample_ptr()[100], 0.0F);
    EXPECT_EQ(taps[9].get_buf_size(), 256U);
}

TEST(Core, SendsReachReverbAndDelay) {
    const auto tail = [](unsigned send, int level) {
        EngineHost host;
        host.set_plain(0, OSC_SAW);
        host.set(0, send, level);
        host.note_on(0, 60);
        host.note_off(0, 60, 2000);
        host.render(4096);
        return peak(host.render(65536));
    };
    const float dry = tail(CTRL_AUX1_LEVEL, 0); // what the master's high-passes ring on
    EXPECT_LT(dry, 2e-4F);
    EXPECT_GT(tail(CTRL_AUX1_LEVEL, 127), 0.003F);
    EXPECT_GT(tail(CTRL_AUX2_LEVEL, 127), 0.01F);
    EXPECT_EQ(tail(CTRL_AUX1_LEVEL, 5), dry) << "a send of (5 / 127)^3 is below the threshold";
}

TEST(Core, RetriggerIsOffAtMappedValueZeroAndMonoOtherwise) {
    const auto sides_differ = [](int speedup) {
        EngineHost host;
        host.set(0, CTRL_PANNING, 127);
        host.set(0, CTRL_RETRIGGER_SPEEDUP, speedup);
        host.note_on(0, 60);
        const std::vector<float> sound = host.render(1024);
        return side(sound, 0) != side(sound, 1);
    };
    EXPECT_TRUE(sides_differ(63));
    EXPECT_FALSE(sides_differ(65));
    EXPECT_FALSE(sides_differ(0)) << "byte 0 is a speed-up of -63";
}

// A bank can hold any byte; the choice lists are clamped before anything reaches the engine.
void set_random_bytes(EngineHost& host, std::mt19937& random, bool extremes) {
    for (const ControllerInfo& info : controller_rows()) {
        for (int channel = 0; channel < (is_global_controller(info.number) ? 1 : 4); channel++) {
            int value = int(random() % 128);
            if (extremes)
                value = value < 64 ? 0 : 127;
            host.set(channel, info.number, filter_controller(info.number, value));
        }
    }
}

TEST(Core, SurvivesEverySettingThatABankCanHold) {
    for (unsigned seed = 1; seed <= 60; seed++) {
        std::mt19937 random(seed);
        EngineHost host;
        for (int round = 0; round < 3; round++) {
            set_random_bytes(host, random, seed % 2 == 0);
            for (int i = 0; i < 6; i++) {
                const int channel = int(random() % 4);
                const int note = int(random() % 128);
                host.note_on(channel, note, 1 + int(random() % 127), uint32_t(random() % 2000));
                host.note_off(channel, note, 2000 + uint32_t(random() % 2000));
            }
            ASSERT_TRUE(is_sound(host.render(6144, round == 1 ? 2048 : 64))) << "seed " << seed;
        }
        // Whatever it was, a default sound plays afterwards as if nothing had happened.
        for (const ControllerInfo& info : controller_rows()) {
            for (int channel = 0; channel < (is_global_controller(info.number) ? 1 : 4); channel++)
                host.set(channel, info.number, default_byte(info));
        }
        host.render(256);
        host.note_on(0, 60);
        const std::vector<float> sound = host.render(2048);
        ASSERT_TRUE(is_sound(sound)) << "seed " << seed;
        ASSERT_GT(peak(sound), 0.01F) << "seed " << seed;
    }
}

TEST(Core, TwoWaveshapersAtFullLevelLeaveNothingBehind) {
    // Two waveshaping insert effects in a row drive the channel to infinity; its neighbour, the
    // buses and the next note must not notice.
    EngineHost host;
    host.set(0, CTRL_CHANFX1_TYPE, 4);
    host.set(0, CTRL_CHANFX1_PARAM1, 127);
    host.set(0, CTRL_CHANFX1_PARAM3, 9);
    host.set(0, CTRL_CHANFX1B_TYPE, 4);
    host.set(0, CTRL_CHANFX1B_PARAM1, 127);
    host.set(0, CTRL_CHANFX1B_PARAM3, 9);
    for (const unsigned send : {CTRL_AUX1_LEVEL, CTRL_AUX2_LEVEL})
        host.set(0, send, 127);
    for (int note = 20; note < 110; note++)
        host.note_on(0, note);
    EXPECT_TRUE(is_sound(host.render(22528)));
    for (int note = 20; note < 110; note++)
        host.note_off(0, note);
    EXPECT_TRUE(is_sound(host.render(44032)));
    for (const unsigned type : {CTRL_CHANFX1_TYPE, CTRL_CHANFX1B_TYPE})
        host.set(0, type, 0);
    host.note_on(0, 60);
    const std::vector<float> sound = host.render(2048);
    EXPECT_TRUE(is_sound(sound));
    EXPECT_GT(peak(sound), 0.01F);
}

} // namespace

} // namespace tarquil
