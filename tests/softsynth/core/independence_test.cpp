// Engines that render at the same time give the bytes that each gives alone.

#include <gtest/gtest.h>

#include <random>
#include <thread>
#include <vector>

#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

// Uses all that engines might share: every effect, long timelines, moving filters, the retrigger.
std::vector<float> play(unsigned seed) {
    std::mt19937 random(seed);
    const auto upto = [&](unsigned last) { return int(random() % (last + 1)); };
    EngineHost host;
    for (int channel = 0; channel < 3; channel++) {
        host.set_plain(channel, 1 + upto(3));
        host.set(channel, CTRL_OSC1_MULTI_COUNT, upto(3));
        host.set(channel, CTRL_CHANFX1_TYPE, 1 + int((seed + unsigned(channel)) % 5));
        host.set(channel, CTRL_CHANFX2_TYPE, 1 + channel);
        for (unsigned i = 0; i < 5; i++) {
            host.set(channel, CTRL_CHANFX1_PARAM1 + i, upto(127));
            host.set(channel, CTRL_CHANFX2_PARAM1 + i, i == 3 ? 1 : upto(127));
        }
        host.set(channel, CTRL_AUX1_LEVEL, 100);
        host.set(channel, CTRL_AUX2_LEVEL, 100);
        host.note_on(channel, 40 + upto(30));
    }
    host.set(0, CTRL_RETRIGGER_BPM, 127);
    host.set(0, CTRL_RETRIGGER_SPEEDUP, 70 + upto(20));
    host.set(0, CTRL_RETRIGGER_WET_LEVEL, 64);
    std::vector<float> sound;
    for (int block = 0; block < 30; block++) {
        for (uint32_t at = 0; at < 1024; at += 32) {
            for (const unsigned number : {CTRL_FILTER1_CUTOFF, CTRL_PANNING, CTRL_MAIN_VOLUME})
                host.set(upto(2), number, upto(127), at);
        }
        const std::vector<float> rendered = host.render(1024, 1024);
        sound.insert(sound.end(), rendered.begin(), rendered.end());
    }
    return sound;
}

TEST(Independence, EnginesOnManyThreadsSoundAsAlone) {
    constexpr unsigned NUM_ENGINES = 6;
    std::vector<std::vector<float>> alone;
    for (unsigned seed = 0; seed < NUM_ENGINES; seed++)
        alone.push_back(play(seed));
    std::vector<std::vector<float>> together(NUM_ENGINES);
    std::vector<std::thread> threads;
    for (unsigned seed = 0; seed < NUM_ENGINES; seed++)
        threads.emplace_back([&together, seed] { together[seed] = play(seed); });
    for (std::thread& thread : threads)
        thread.join();
    for (unsigned seed = 0; seed < NUM_ENGINES; seed++) {
        EXPECT_GT(peak(alone[seed]), 0.01F);
        EXPECT_TRUE(together[seed] == alone[seed]) << "engine " << seed;
    }
}

TEST(Independence, AMutedBandIsMutedInItsOwnEngine) {
    EngineHost muted;
    EngineHost other;
    for (unsigned band = 0; band < MC_N_BANDS; band++)
        muted->set_band_muted(band, true);
    muted.note_on(0, 60);
    other.note_on(0, 60);
    EXPECT_EQ(peak(muted.render(2048)), 0.0F);
    EXPECT_GT(peak(other.render(2048)), 0.05F);
}

} // namespace

} // namespace tarquil
