// The engine: preconditions and survival.

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

TEST(Core, ASeedChoosesTheRandomPhases) {
    const auto play = [](uint32_t seed) {
        EngineHost host;
        host->seed_phases(seed);
        host.set(0, CTRL_OSC1_RANDOMIZE_PHASE, 127);
        host.note_on(0, 60);
        return host.render(256);
    };
    EXPECT_EQ(play(1), play(1));
    EXPECT_NE(play(1), play(2));
}

TEST(Core, AMutedBandIsMutedInItsOwnEngine) {
    EngineHost muted;
    EngineHost other;
    for (unsigned band = 0; band < MC_N_BANDS; band++)
        muted->set_band_muted(band, true);
    muted.note_on(0, 60);
    other.note_on(0, 60);
    EXPECT_EQ(peak(muted.render(2048)), 0.0F);
    EXPECT_GT(peak(other.render(2048)), 0.05F);
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
