// The reverb's delay lines: every kernel gives the scalar one's bits.

#include <algorithm>

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(ReverbTank, EveryKernelGivesTheSameBits) {
    constexpr uint32_t FRAMES = 3000; // every line closes its circle
    const std::vector<float> in = test_signal(2 * FRAMES, 1);
    const auto run = [&](const Kernels& kernels, uint32_t block) {
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
    };
    for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
        for (const uint32_t block : {1U, 4U, 63U, 64U, 1000U})
            EXPECT_TRUE(same_bits(run(kernels, block), run(scalar, block))) << block;
    });
}

} // namespace

} // namespace tarquil
