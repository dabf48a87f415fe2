// The level followers: every kernel gives the scalar one's bits.

#include <cmath>

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(DetectLevels, EveryKernelGivesTheSameBits) {
    constexpr uint32_t FRAMES = 333;
    std::vector<float> frames[LevelDetectors::SIGNALS];
    for (unsigned d = 0; d < LevelDetectors::SIGNALS; d++)
        frames[d] = test_signal(2 * FRAMES, d + 1, d == 2 ? 100.0F : 0.3F);
    frames[3][401] = NAN;
    frames[3][420] = INFINITY;
    const auto detect = [&](const Kernels& kernels, uint32_t count) {
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
    };
    for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
        for (const uint32_t count : {1U, 3U, 4U})
            EXPECT_TRUE(same_bits(detect(kernels, count), detect(scalar, count)));
    });
}

} // namespace

} // namespace tarquil
