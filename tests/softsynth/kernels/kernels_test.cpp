// Every form of the smaller kernels gives the scalar one's bits, and which form is chosen; copies
// and filters have tests of their own.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/softsynth/kernels/every_kernel_level.h"

namespace tarquil {

namespace {

TEST(EveryKernel, BestMatchFindsTheSamePlace) {
    constexpr uint32_t PLACES = 400;
    constexpr uint32_t LENGTH = 128;
    const std::vector<float> stretch = test_signal(LENGTH, 1);
    for (uint32_t seed = 2; seed < 12; seed++) {
        std::vector<float> sound = test_signal(PLACES + LENGTH, seed);
        // A sound that repeats itself has several best places.
        for (size_t i = seed % 2 == 0 ? 150 : sound.size(); i < sound.size(); i++)
            sound[i] = sound[i - 150];
        if (seed == 3)
            sound[200] = NAN;
        if (seed == 5)
            sound[0] = INFINITY;
        for (const uint32_t end : {1U, 3U, 17U, 65U, 150U, 397U}) {
            const MatchSearch search = {stretch.data(), LENGTH, sound.data(), seed % 3,
                                        seed % 3 + end};
            for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
                EXPECT_EQ(kernels.best_match(search), scalar.best_match(search)) << seed;
            });
        }
    }
}

TEST(EveryKernel, LevelFollowers) {
    constexpr uint32_t FRAMES = 333;
    std::vector<float> frames[LevelDetectors::SIGNALS];
    for (unsigned d = 0; d < LevelDetectors::SIGNALS; d++)
        frames[d] = test_signal(2 * FRAMES, d + 1, d == 2 ? 100.0F : 0.3F);
    frames[3][401] = NAN;
    frames[3][420] = INFINITY;
    for (const uint32_t count : {1U, 3U, 4U}) {
        expect_scalar_bits([&](const Kernels& kernels) {
            LevelDetectors detectors = {count,
                                        {},
                                        {1.2F, 1.01F, 100000.0F, 1.5F},
                                        {0.5F, 0.99F, 0.9999F, 0.9F},
                                        {0.1F, 0.2F, 0.3F, 1e-4F},
                                        {0.1F, 0.0001F, 3.0F, 0.1F}};
            for (unsigned d = 0; d < count; d++)
                detectors.frames[d] = frames[d].data();
            std::vector<float> levels(FRAMES * LevelDetectors::SIGNALS);
            kernels.detect_levels(detectors, levels.data(), FRAMES);
            std::vector<float> result;
            for (uint32_t i = 0; i < levels.size(); i++) {
                if (i % LevelDetectors::SIGNALS < count)
                    result.push_back(levels[i]);
            }
            result.insert(result.end(), detectors.peak, detectors.peak + count);
            result.insert(result.end(), detectors.level, detectors.level + count);
            return result;
        });
    }
}

TEST(EveryKernel, Wavetables) {
    constexpr uint32_t SIZE = 128;
    constexpr uint32_t STRIDE = SIZE + 3;
    constexpr uint32_t HARMONICS = 9;
    constexpr uint32_t COUNTS[] = {0, 1, 2, 3, 3, 5, 7, 8, 8, 8, 9};
    constexpr uint32_t TABLES = std::size(COUNTS);
    const std::vector<float> amplitudes = test_signal(TABLES * HARMONICS, 1);
    expect_scalar_bits([&](const Kernels& kernels) {
        std::vector<HarmonicPhasors> phasors;
        for (uint32_t j = 0; j < HARMONICS; j++) {
            const std::vector<float> v = test_signal(10, j + 2);
            phasors.push_back({{v[0], v[1], v[2], v[3]}, {v[4], v[5], v[6], v[7]}, v[8], v[9]});
        }
        std::vector<float> scratch(HARMONICS * HarmonicTables::CHUNK);
        std::vector<float> samples(TABLES * STRIDE, 3.0F);
        kernels.harmonic_tables({samples.data(), STRIDE, SIZE, TABLES, COUNTS, HARMONICS,
                                 amplitudes.data(), phasors.data(), scratch.data()});
        return samples;
    });
}

TEST(EveryKernel, FramesBetweenSamples) {
    constexpr uint32_t ROWS = 7;
    constexpr uint32_t FRAMES = 61;
    for (const uint32_t num_taps : {16U, 96U, 144U}) {
        const std::vector<float> rows = test_signal((ROWS + 1) * num_taps, 1);
        const std::vector<float> left = test_signal(3 * FRAMES + num_taps, 2);
        const std::vector<float> right = test_signal(3 * FRAMES + num_taps, 3);
        for (const bool interpolated : {false, true}) {
            expect_scalar_bits([&](const Kernels& kernels) {
                std::vector<float> out(2 * FRAMES);
                const uint32_t phases = interpolated ? 1000003 : ROWS;
                const Polyphase sound = {.rows = rows.data(),
                                         .num_taps = num_taps,
                                         .interpolated = interpolated,
                                         .rows_per_phase = double(ROWS) / phases,
                                         .phase = phases - 1,
                                         .phases = phases,
                                         .whole_step = 2,
                                         .rest_step = phases / 5 * 3,
                                         .left = left.data(),
                                         .right = right.data(),
                                         .out_left = out.data(),
                                         .out_right = out.data() + FRAMES};
                kernels.polyphase(sound, FRAMES);
                return out;
            });
        }
    }
}

TEST(EveryKernel, ReverbLines) {
    constexpr uint32_t FRAMES = 3000; // every line closes its circle
    const std::vector<float> in = test_signal(2 * FRAMES, 1);
    for (const uint32_t block : {1U, 4U, 63U, 64U, 1000U}) {
        expect_scalar_bits([&](const Kernels& kernels) {
            std::vector<float> memory = test_signal(25000, 2);
            float* next = memory.data();
            const auto set = [&next](ReverbTank::Line& line, uint32_t size) {
                line = {next, size, size - 1};
                next += size;
            };
            ReverbTank tank;
            tank.feedback = 0.9F;
            tank.damp1 = 0.3F;
            tank.damp2 = 0.7F;
            for (ReverbTank::Side& side : tank.sides) {
                for (uint32_t k = 0; k < ReverbTank::NUM_COMBS; k++) {
                    set(side.combs[k], ReverbTank::SHORTEST + 150 * k + 1);
                    side.stores[k] = float(k) - 2.0F;
                }
                for (uint32_t k = 0; k < ReverbTank::NUM_ALLPASSES; k++)
                    set(side.allpasses[k], ReverbTank::SHORTEST + 40 * k + 1);
            }
            std::vector<float> result(size_t(2) * FRAMES);
            for (uint32_t t = 0; t < FRAMES; t += block)
                kernels.reverb(tank, &in[2 * t], &result[2 * t], std::min(block, FRAMES - t));
            result.insert(result.end(), memory.begin(), memory.end());
            for (const ReverbTank::Side& side : tank.sides)
                result.insert(result.end(), side.stores, side.stores + ReverbTank::NUM_COMBS);
            return result;
        });
    }
}

TEST(EveryKernel, SectionsInSeries) {
    constexpr uint32_t MOST = BiquadSeries::MAX_SECTIONS;
    const BiquadCoefficients equalisers[MOST] = {
        {0.9F, -1.7F, 0.8F, -1.7F, 0.72F, {}}, {1.1F, -1.2F, 0.5F, -1.1F, 0.6F, {}},
        {0.2F, 0.1F, -0.2F, 0.3F, 0.4F, {}},   {1.0F, 1.9F, 0.97F, 1.8F, 0.9F, {}},
        {0.7F, -0.5F, 0.1F, -0.4F, 0.1F, {}},  {1.3F, -2.3F, 1.1F, -1.9F, 0.95F, {}}};
    for (uint32_t count = 1; count <= MOST; count++) {
        for (const uint32_t channels : {1U, 2U}) {
            for (const uint32_t frames : {1U, 3U, 64U}) {
                expect_scalar_bits([&](const Kernels& kernels) {
                    std::vector<float> samples = test_signal(channels * frames, count);
                    BiquadState memory[MOST][2] = {{{0.1F, -0.0F}, {0x1p-140F, 0.2F}}};
                    BiquadSeries series = {{}, {}, count, channels};
                    for (uint32_t k = 0; k < count; k++) {
                        series.coefficients[k] = &equalisers[k];
                        series.memory[k] = memory[k];
                    }
                    kernels.biquad_series(series, samples.data(), frames);
                    for (const auto& section : memory) {
                        for (const BiquadState& state : section)
                            samples.insert(samples.end(), {state.z1, state.z2});
                    }
                    return samples;
                });
            }
        }
    }
}

TEST(EveryKernel, Crossovers) {
    constexpr uint32_t MOST = BandSplit::MAX_CROSSOVERS;
    for (uint32_t count = 1; count <= MOST; count++) {
        for (const uint32_t frames : {1U, 4U, 11U, 12U, 63U, 256U}) {
            expect_scalar_bits([&](const Kernels& kernels) {
                Crossover crossovers[MOST];
                std::vector<float> lows[MOST];
                std::vector<float> high = test_signal(2 * frames, 2);
                BandSplit split = {{}, {}, high.data(), count};
                for (uint32_t b = 0; b < MOST; b++) {
                    const float low = 0.01F * float(b + 1);
                    crossovers[b] = {{low, low, 0.9F, 0.9F},
                                     {2.0F * low, 2.0F * low, -1.8F, -1.8F},
                                     -1.8F,
                                     0.82F,
                                     {{0.0F, 0.0F, -0.0F, 0.1F}, {}, {0.2F}},
                                     {{}, {}, {}, {0.0F, 0x1p-140F, -0.3F}}};
                    lows[b].resize(size_t(2) * frames);
                    split.crossovers[b] = &crossovers[b];
                    split.low[b] = lows[b].data();
                }
                kernels.split_bands(split, frames);
                std::vector<float> result = high;
                for (uint32_t b = 0; b < MOST; b++) {
                    result.insert(result.end(), lows[b].begin(), lows[b].end());
                    for (const auto* memory : {&crossovers[b].z1, &crossovers[b].z2}) {
                        for (const auto& stage : *memory)
                            result.insert(result.end(), std::begin(stage), std::end(stage));
                    }
                }
                return result;
            });
        }
    }
}

TEST(KernelLevels, TheEnvironmentForcesALevelElseTheBestIsUsed) {
    ASSERT_STREQ(kernel_levels().front().name, "scalar");
    for (const KernelLevel& level : kernel_levels()) {
        setenv("TARQUIL_KERNELS", level.name, 1);
        EXPECT_STREQ(choose_kernel_level().name, level.name);
    }
    setenv("TARQUIL_KERNELS", "v9", 1);
    testing::internal::CaptureStderr();
    EXPECT_STREQ(choose_kernel_level().name, kernel_levels().back().name);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::AllOf(testing::HasSubstr("TARQUIL_KERNELS=v9"), testing::EndsWith("\n")));
    unsetenv("TARQUIL_KERNELS");
    EXPECT_STREQ(choose_kernel_level().name, kernel_levels().back().name);
}

} // namespace

} // namespace tarquil
