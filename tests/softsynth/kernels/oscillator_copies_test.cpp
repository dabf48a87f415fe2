// The sum of oscillator copies: every kernel gives the scalar one's bits.

#include <cmath>
#include <random>
#include <vector>

#include "tests/softsynth/kernels/every_kernel_level.h"

namespace tarquil {

namespace {

struct Case {
    uint32_t count;
    uint32_t run; // copies that share a table
    uint32_t shift;
    float highest_pitch;
};

TEST(OscillatorCopies, EveryKernelGivesTheSameBits) {
    std::mt19937 random(1);
    constexpr uint32_t SIZES[] = {1, 3, 4, 31, 32, 33, 47, 63, 64, 79, 256};
    constexpr uint32_t MAX_COPIES = 255;
    // An increment beyond 2^32 wraps; infinite and invalid ones have a defined value too.
    for (const Case& c : {Case{1, 1, 20, 2.0F},
                          {2, 2, 20, 2.0F},
                          {3, 1, 20, 2.0F},
                          {16, 8, 20, 1e6F},
                          {63, 63, 20, 1e13F},
                          {255, 16, 20, INFINITY},
                          {15, 15, 24, 2.0F},
                          {7, 7, 20, NAN}}) {
        std::vector<std::vector<float>> tables;
        for (uint32_t i = 0; i * c.run < c.count; i++)
            tables.push_back(test_signal(1U << (32 - c.shift), i));
        const float* table[MAX_COPIES];
        float scale[MAX_COPIES];
        uint32_t start[MAX_COPIES];
        for (uint32_t i = 0; i < c.count; i++) {
            table[i] = tables[i / c.run].data();
            scale[i] = 1e7F + 1e5F * float(i);
            start[i] = uint32_t(random());
        }
        for (const uint32_t size : SIZES) {
            std::vector<float> pitches(size, 1.0F);
            for (uint32_t i = 0; i < size; i += 32)
                pitches[i] = i % 64 == 0 ? 0.99F : c.highest_pitch;
            const auto render = [&](decltype(Kernels::oscillator_copies) kernel,
                                    std::vector<float>& samples) {
                std::vector<uint32_t> phase(start, start + c.count);
                samples.assign(size + 1, 2.0F);
                kernel({phase.data(), scale, table, c.count, uint32_t(tables.size()), c.shift},
                       samples.data(), pitches.data(), size);
                return phase;
            };
            for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
                std::vector<float> expected;
                const std::vector<uint32_t> end = render(scalar.oscillator_copies, expected);
                for (const auto kernel :
                     {kernels.oscillator_copies, kernels.many_oscillator_copies}) {
                    std::vector<float> samples;
                    EXPECT_EQ(render(kernel, samples), end);
                    EXPECT_TRUE(same_bits(samples, expected))
                        << c.count << " copies, " << size << " samples";
                }
            });
        }
    }
}

} // namespace

} // namespace tarquil
