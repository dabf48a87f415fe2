// Oscillators at their limits; golden scenes and recorded sequences have their sound.

#include "softsynth/wavetables/oscillator.h"

#include <gtest/gtest.h>

#include "player/shared_waveforms.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/wavetables/oscillator_group.h"

namespace tarquil {

namespace {

TEST(Oscillator, IncrementsBeyond32BitsWrap) {
    EXPECT_EQ(phase_increment(2.0F, 3e9F), uint32_t(6000000000LL));
    EXPECT_EQ(phase_increment(-1.0F, 1.0F), 0xFFFFFFFFU);
}

TEST(CopyTuningCache, GivesEveryTuningItsOwnCopies) {
    static CopyTuningCache cache;
    constexpr uint32_t COUNT = 15;
    // More tunings than it holds, twice.
    for (int i = 0; i < 200; i++) {
        const CopyTuning tuning = {i % 3 == 0 ? OSC_SAW : OSC_SQUARE, COUNT,
                                   float(30 + i % 100) + 0.25F, 0.01F};
        uint32_t phases[COUNT] = {};
        const OscillatorCopies found = cache.get(shared_waveforms(), tuning).with_phases(phases);
        ASSERT_EQ(found.count, COUNT);
        for (uint32_t j = 0; j < COUNT; j++) {
            const float f = note_frequency(tuning.step * (float(j) - 7.0F) + tuning.base);
            Wavetable_ret wavetable;
            shared_waveforms().getWavetable(tuning.type, f, &wavetable);
            ASSERT_EQ(found.increment_scale[j], oscillator_increment_scale(f)) << i << " " << j;
            ASSERT_EQ(found.table[j], wavetable.data) << i << " " << j;
        }
    }
}

} // namespace

} // namespace tarquil
