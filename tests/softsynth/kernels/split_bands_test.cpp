// The crossover: every kernel gives the scalar one's bits.

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(SplitBands, EveryKernelGivesTheSameBits) {
    for (int stages = 0; stages <= Crossover::MAX_STAGES; stages++) {
        for (const uint32_t frames : {1U, 4U, 63U, 256U}) {
            const auto split = [&](const Kernels& kernels) {
                std::vector<float> low = test_signal(2 * frames, 1);
                const std::vector<float> high = test_signal(2 * frames, 2);
                low.insert(low.end(), high.begin(), high.end());
                Crossover crossover = {{0.01F, 0.01F, 0.9F, 0.9F},
                                       {0.02F, 0.02F, -1.8F, -1.8F},
                                       -1.8F,
                                       0.82F,
                                       stages,
                                       {}};
                crossover.sections[0].z1[2] = -0.0F;
                crossover.sections[3].z2[1] = 0x1p-140F;
                kernels.split_bands(crossover, low.data(), low.data() + 2 * frames, frames);
                const auto* memory = crossover.sections[0].z1;
                // NOLINTNEXTLINE(bugprone-sizeof-expression): the sections are nothing but floats
                low.insert(low.end(), memory, memory + sizeof crossover.sections / (sizeof(float)));
                return low;
            };
            for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
                EXPECT_TRUE(same_bits(split(kernels), split(scalar)))
                    << stages << " stages, " << frames << " frames";
            });
        }
    }
}

} // namespace

} // namespace tarquil
