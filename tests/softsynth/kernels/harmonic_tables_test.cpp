// Wavetables: every kernel gives the scalar one's bits.

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(HarmonicTables, EveryKernelGivesTheSameBits) {
    constexpr uint32_t SIZE = 128;
    constexpr uint32_t STRIDE = SIZE + 3;
    constexpr uint32_t HARMONICS = 9;
    constexpr uint32_t COUNTS[] = {0, 1, 2, 3, 3, 5, 7, 8, 8, 8, 9};
    constexpr uint32_t TABLES = std::size(COUNTS);
    const std::vector<float> amplitudes = test_signal(TABLES * HARMONICS, 1);
    const auto build = [&](const Kernels& kernels) {
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
    };
    for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
        EXPECT_TRUE(same_bits(build(kernels), build(scalar)));
    });
}

} // namespace

} // namespace tarquil
