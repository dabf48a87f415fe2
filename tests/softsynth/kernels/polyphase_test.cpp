// Frames between samples: every kernel gives the scalar one's bits.

#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/test_signal.h"

namespace tarquil {

namespace {

TEST(PolyphaseKernel, EveryLevelGivesTheSameBits) {
    constexpr uint32_t ROWS = 7;
    constexpr uint32_t FRAMES = 61;
    for (const uint32_t num_taps : {16U, 96U, 144U}) {
        const std::vector<float> rows = test_signal((ROWS + 1) * num_taps, 1);
        const std::vector<float> left = test_signal(3 * FRAMES + num_taps, 2);
        const std::vector<float> right = test_signal(3 * FRAMES + num_taps, 3);
        for (const bool interpolated : {false, true}) {
            const auto read = [&](const Kernels& kernels) {
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
            };
            for_every_kernel_level([&](const Kernels& kernels, const Kernels& scalar) {
                EXPECT_TRUE(same_bits(read(kernels), read(scalar))) << num_taps << interpolated;
            });
        }
    }
}

} // namespace

} // namespace tarquil
