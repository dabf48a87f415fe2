// Biquads in lanes: every kernel gives the scalar one's bits.

#include <cmath>

#include "softsynth/filters/filter.h"
#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/filter_lanes.h"

namespace tarquil {

namespace {

constexpr uint32_t SIZE = 80;

struct Batch {
    Batch(uint32_t count, int depth) : signals(count), filters(count) {
        std::mt19937 random(count);
        for (uint32_t i = 0; i < count; i++) {
            signals[i] = filter_input(random, SIZE);
            filters[i].init(FilterType(1 + i % 8), 0, depth, 0.0F);
            filters[i].set_octaves_cutoff(float(random() % 100) * 0.1F);
            filters[i].set_resonance(float(random() % 80) * 0.1F);
            filters[i].update();
        }
    }
    void render(const Kernels& kernels, uint32_t first, uint32_t length) {
        std::vector<float*> rows;
        std::vector<BiquadState*> memory;
        std::vector<const BiquadCoefficients*> coefficients;
        for (size_t i = 0; i < signals.size(); i++) {
            rows.push_back(signals[i].data());
            memory.push_back(filters[i].get_state());
            coefficients.push_back(&filters[i].get_coefficients());
        }
        kernels.biquad_lanes({rows.data(), memory.data(), coefficients.data(),
                              uint32_t(rows.size()), uint32_t(filters[0].get_depth())},
                             first, length);
    }

    std::vector<std::vector<float>> signals;
    std::vector<Filter> filters;
};

TEST(BiquadLanes, EveryKernelGivesTheSameBits) {
    for_every_kernel_level([](const Kernels& kernels, const Kernels& scalar) {
        for (int depth = 1; depth <= Filter::MAX_DEPTH; depth++) {
            for (const uint32_t count : {1U, 2U, 5U, 16U, 23U, 64U, 95U}) {
                Batch batch(count, depth);
                Batch expected(count, depth);
                uint32_t first = 0;
                for (const uint32_t length : {32U, 4U, 3U, 1U, 33U, 7U}) {
                    batch.render(kernels, first, length);
                    expected.render(scalar, first, length);
                    first += length;
                }
                for (uint32_t i = 0; i < count; i++) {
                    EXPECT_TRUE(
                        same_samples(batch.signals[i].data(), expected.signals[i].data(), SIZE) &&
                        same_samples(&batch.filters[i].get_state()->z1,
                                     &expected.filters[i].get_state()->z1,
                                     size_t(2) * uint32_t(depth)))
                        << "lane " << i << " of " << count << ", depth " << depth;
                }
            }
        }
    });
}

} // namespace

} // namespace tarquil
