// Ladders in lanes: every kernel gives the scalar one's bits.

#include <cmath>

#include "softsynth/filters/ladderfilter.h"
#include "tests/softsynth/kernels/every_kernel_level.h"
#include "tests/softsynth/kernels/filter_lanes.h"

namespace tarquil {

namespace {

constexpr uint32_t SIZE = 80;

struct Batch {
    explicit Batch(uint32_t count)
        : signals(count), filters(count), scratch(LadderLanes::SCRATCH_OF_MANY + 16) {
        std::mt19937 random(count);
        for (uint32_t i = 0; i < count; i++) {
            signals[i] = filter_input(random, SIZE);
            filters[i].init(FilterType(FILTER_LADDER_START_MARKER + i % 7), 0.0F);
            filters[i].set_octaves_cutoff(float(random() % 100) * 0.1F);
            filters[i].set_resonance(float(random() % 80) * 0.1F);
            filters[i].update();
        }
    }
    void render(const Kernels& kernels, uint32_t first, uint32_t length) {
        std::vector<float*> rows;
        std::vector<LadderMemory*> memory;
        std::vector<const LadderCoefficients*> coefficients;
        for (size_t i = 0; i < signals.size(); i++) {
            rows.push_back(signals[i].data());
            memory.push_back(&filters[i].get_memory());
            coefficients.push_back(&filters[i].get_coefficients());
        }
        void* aligned = scratch.data();
        size_t space = scratch.size() * sizeof(float);
        std::align(64, LadderLanes::SCRATCH_OF_MANY * sizeof(float), aligned, space);
        kernels.ladder_lanes({rows.data(), memory.data(), coefficients.data(),
                              uint32_t(rows.size()), static_cast<float*>(aligned)},
                             first, length);
    }

    std::vector<std::vector<float>> signals;
    std::vector<LadderFilter> filters;
    std::vector<float> scratch;
};

TEST(LadderLanes, EveryKernelGivesTheSameBits) {
    for_every_kernel_level([](const Kernels& kernels, const Kernels& scalar) {
        for (const uint32_t count : {1U, 3U, 16U, 17U, 40U, 61U, 96U}) {
            Batch batch(count);
            Batch expected(count);
            uint32_t first = 0;
            for (const uint32_t length : {32U, 4U, 3U, 1U, 33U, 7U}) {
                batch.render(kernels, first, length);
                expected.render(scalar, first, length);
                first += length;
            }
            for (uint32_t i = 0; i < count; i++) {
                EXPECT_TRUE(
                    same_samples(batch.signals[i].data(), expected.signals[i].data(), SIZE) &&
                    same_samples(batch.filters[i].get_memory().y,
                                 expected.filters[i].get_memory().y,
                                 sizeof(LadderMemory) / sizeof(float)))
                    << "lane " << i << " of " << count;
            }
        }
    });
}

} // namespace

} // namespace tarquil
