// Oscillators: the group against its single copies, whose sound golden scenes have.

#include "softsynth/wavetables/oscillator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "player/shared_waveforms.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/wavetables/oscillator_group.h"
#include "softsynth/wavetables/phase_random.h"

namespace tarquil {

namespace {

MonoBuffer out;
MonoBuffer pitch;

void fill_pitch(uint32_t size, float ratio) {
    pitch.init(size);
    for (uint32_t i = 0; i < size; i++)
        pitch.get_first_sample_ptr()[i] = ratio;
}

TEST(Oscillator, IncrementsBeyond32BitsWrap) {
    EXPECT_EQ(phase_increment(2.0F, 3e9F), uint32_t(6000000000LL));
    EXPECT_EQ(phase_increment(-1.0F, 1.0F), 0xFFFFFFFFU);
}

TEST(OscillatorGroup, IsTheOrderedSumOfItsCopies) {
    const unsigned seed = 20261;
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> frequency(30.0F, 5000.0F);
    std::uniform_real_distribution<float> cycles(0.0F, 1.0F);
    for (const OscType type : {OSC_SINE, OSC_SAW, OSC_SQUARE, OSC_TRIANGLE, OSC_NOISE}) {
        for (const int count : {1, 3, 255}) {
            static Oscillator copies[MAX_MULTI_OSC_WIDTH];
            static OscillatorGroup group;
            group.init(type);
            for (int j = 0; j < count; j++) {
                const float f = frequency(random);
                const float p = cycles(random);
                copies[j].init(shared_waveforms(), type, f, p);
                group.add_copy(shared_waveforms(), f, p);
            }
            for (const uint32_t offset : {0U, 12U, 0U, 96U}) {
                fill_pitch(100, 0.7F);
                static MonoBuffer sum;
                static MonoBuffer copy;
                sum.init(100);
                copy.init(100);
                out.init(100);
                for (int j = 0; j < count; j++) {
                    copies[j].render(j == 0 ? sum : copy, pitch, offset);
                    if (j > 0)
                        sum += copy;
                }
                group.render(out, pitch, offset);
                for (uint32_t i = offset; i < 100; i++)
                    ASSERT_EQ(out.get_first_sample_ptr()[i], sum.get_first_sample_ptr()[i])
                        << "type " << type << ", copies " << count << ", seed " << seed;
            }
        }
    }
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

TEST(PhaseRandom, EqualsTheCLibrarysGenerator) {
    for (const unsigned seed : {1U, 2U, 12345U, 0xFFFFFFFFU, 0U}) {
        PhaseRandom random(seed);
        std::srand(seed);
        for (int i = 0; i < 1000; i++)
            ASSERT_EQ(random.next(), uint32_t(std::rand())) << "seed " << seed << ", number " << i;
    }
}

} // namespace

} // namespace tarquil
