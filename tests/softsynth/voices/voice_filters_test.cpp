// All voices' filters at once: the kernels of every level sound the same in a running engine.

#include "softsynth/voices/voice_filters.h"

#include <gtest/gtest.h>

#include <random>

#include "softsynth/kernels/kernel_levels.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

// Notes that start and end anywhere in a block, with every filter type and depth and with controls
// that change on some channels only.
std::vector<float> play(uint32_t seed, uint32_t block) {
    EngineHost host;
    std::mt19937 random(seed);
    const auto below = [&](unsigned limit) { return int(random() % limit); };
    for (int c = 0; c < NUM_CHANNELS; c++) {
        host.set_plain(c, OSC_SAW);
        host.set(c, CTRL_FILTER1_TYPE, below(25));
        host.set(c, CTRL_FILTER1_DEPTH, 1 + below(4));
        host.set(c, CTRL_FILTER1_RESONANCE, below(128));
        host.set(c, CTRL_CHAN_MAX_VOICES, 1 + below(8));
        if (c % 2 == 0)
            host.set(c, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_ENV2);
    }
    std::vector<float> sound;
    for (int step = 0; step < 24; step++) {
        for (int i = 0; i < 12; i++) {
            const int note = 40 + below(24);
            const int channel = below(NUM_CHANNELS);
            const auto delay = uint32_t(below(512));
            if (below(3) == 0)
                host.note_off(channel, note, delay);
            else
                host.note_on(channel, note, 40 + below(60), delay);
            host.set(below(NUM_CHANNELS), CTRL_FILTER1_CUTOFF, below(128), delay);
        }
        const std::vector<float> part = host.render(512, block);
        sound.insert(sound.end(), part.begin(), part.end());
    }
    return sound;
}

TEST(VoiceFilters, SoundTheSameWithEveryKernel) {
    const KernelLevel& before = kernel_level();
    for (const uint32_t block : {512U, 36U}) {
        use_kernel_level(kernel_levels().front());
        const std::vector<float> expected = play(block, block);
        ASSERT_GT(peak(expected), 0.01F);
        for (const KernelLevel& level : kernel_levels()) {
            use_kernel_level(level);
            EXPECT_TRUE(play(block, block) == expected) << level.name << ", seed " << block;
        }
    }
    use_kernel_level(before);
}

} // namespace

} // namespace tarquil
