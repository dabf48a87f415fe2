// Filters in lanes, biquads and ladders: every kernel gives the scalar one's bits.

#include <bit>
#include <cmath>
#include <random>

#include "softsynth/filters/filter.h"
#include "softsynth/filters/ladderfilter.h"
#include "tests/softsynth/kernels/every_kernel_level.h"

namespace tarquil {

namespace {

constexpr uint32_t SIZE = 80;

// A signal that is not finite now and then.
std::vector<float> filter_input(std::mt19937& random) {
    std::vector<float> samples = test_signal(SIZE, uint32_t(random()));
    if (random() % 8 == 0)
        samples[SIZE / 2] = INFINITY;
    return samples;
}

// Compares bits, but any NaN equals any other.
bool same_samples(const float* a, const float* b, size_t count) {
    for (size_t i = 0; i < count; i++) {
        if (!(std::isnan(a[i]) && std::isnan(b[i])) &&
            std::bit_cast<uint32_t>(a[i]) != std::bit_cast<uint32_t>(b[i]))
            return false;
    }
    return true;
}

struct Biquads {
    using Cascade = Filter;
    static void init(Filter& filter, uint32_t i, int depth) {
        filter.init(FilterType(1 + i % 8), 0, depth, 0.0F);
    }
    static BiquadState* memory(Filter& filter) { return filter.get_state(); }
    static const float* samples(Filter& filter) { return &filter.get_state()->z1; }
    static size_t num_samples(int depth) { return size_t(2) * unsigned(depth); }
    static void render(const Kernels& kernels, float* const* rows, BiquadState* const* memory,
                       const BiquadCoefficients* const* coefficients, uint32_t count, int depth,
                       uint32_t first, uint32_t length) {
        kernels.biquad_lanes({rows, memory, coefficients, count, uint32_t(depth)}, first, length);
    }
};

struct Ladders {
    using Cascade = LadderFilter;
    static void init(LadderFilter& filter, uint32_t i, int /*depth*/) {
        filter.init(FilterType(FILTER_LADDER_START_MARKER + i % 7), 0.0F);
    }
    static LadderMemory* memory(LadderFilter& filter) { return &filter.get_memory(); }
    static const float* samples(LadderFilter& filter) { return filter.get_memory().y; }
    static size_t num_samples(int /*depth*/) { return sizeof(LadderMemory) / sizeof(float); }
    static void render(const Kernels& kernels, float* const* rows, LadderMemory* const* memory,
                       const LadderCoefficients* const* coefficients, uint32_t count, int /*depth*/,
                       uint32_t first, uint32_t length) {
        alignas(64) static float scratch[LadderLanes::SCRATCH_OF_MANY];
        kernels.ladder_lanes({rows, memory, coefficients, count, scratch}, first, length);
    }
};

template <typename Kind> struct Batch {
    Batch(uint32_t count, int stages) : depth(stages), signals(count), filters(count) {
        std::mt19937 random(count);
        for (uint32_t i = 0; i < count; i++) {
            signals[i] = filter_input(random);
            Kind::init(filters[i], i, depth);
            filters[i].set_octaves_cutoff(float(random() % 100) * 0.1F);
            filters[i].set_resonance(float(random() % 80) * 0.1F);
            filters[i].update();
        }
    }
    void render(const Kernels& kernels) {
        std::vector<float*> rows;
        std::vector<decltype(Kind::memory(filters[0]))> memory;
        std::vector<decltype(&filters[0].get_coefficients())> coefficients;
        for (size_t i = 0; i < signals.size(); i++) {
            rows.push_back(signals[i].data());
            memory.push_back(Kind::memory(filters[i]));
            coefficients.push_back(&filters[i].get_coefficients());
        }
        uint32_t first = 0;
        for (const uint32_t length : {32U, 4U, 3U, 1U, 33U, 7U}) {
            Kind::render(kernels, rows.data(), memory.data(), coefficients.data(),
                         uint32_t(rows.size()), depth, first, length);
            first += length;
        }
    }

    int depth;
    std::vector<std::vector<float>> signals;
    std::vector<typename Kind::Cascade> filters;
};

template <typename Kind> class FilterLanes : public testing::Test {};
using Kinds = testing::Types<Biquads, Ladders>;
TYPED_TEST_SUITE(FilterLanes, Kinds);

TYPED_TEST(FilterLanes, EveryKernelGivesTheSameBits) {
    for_every_kernel_level([](const Kernels& kernels, const Kernels& scalar) {
        for (int depth = 1; depth <= Filter::MAX_DEPTH; depth++) {
            for (const uint32_t count : {1U, 2U, 5U, 16U, 17U, 40U, 64U, 96U}) {
                Batch<TypeParam> batch(count, depth);
                Batch<TypeParam> expected(count, depth);
                batch.render(kernels);
                expected.render(scalar);
                for (uint32_t i = 0; i < count; i++) {
                    EXPECT_TRUE(
                        same_samples(batch.signals[i].data(), expected.signals[i].data(), SIZE) &&
                        same_samples(TypeParam::samples(batch.filters[i]),
                                     TypeParam::samples(expected.filters[i]),
                                     TypeParam::num_samples(depth)))
                        << "lane " << i << " of " << count << ", depth " << depth;
                }
            }
        }
    });
}

} // namespace

} // namespace tarquil
