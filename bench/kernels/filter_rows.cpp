// The voices' filters, side by side.

#include <algorithm>
#include <memory>
#include <string>

#include "bench/kernels/kernel_row.h"
#include "bench/signals.h"
#include "softsynth/filters/filter.h"
#include "softsynth/filters/ladderfilter.h"
#include "softsynth/kernels/kernels.h"

namespace tarquil {

namespace {

constexpr uint32_t LENGTH = 64;

// The signals of a batch.  They are filtered again and again, so that resonance 0 lets them fade;
// with denormals flushed the time does not depend on them.
struct Signals {
    explicit Signals(uint32_t count) : rows(count), samples(size_t(count) * LENGTH) {
        fill_noise(samples.data(), count * LENGTH);
        for (uint32_t i = 0; i < count; i++)
            rows[i] = &samples[size_t(i) * LENGTH];
    }

    std::vector<float*> rows;
    std::vector<float> samples;
};

std::string voices(uint32_t count) {
    return std::to_string(count) + (count == 1 ? " voice" : " voices");
}

KernelRow ladder_row(uint32_t count) {
    struct Batch {
        explicit Batch(uint32_t size)
            : signals(size), memory(size), memory_rows(size), coefficient_rows(size, &coefficients),
              scratch(LadderLanes::SCRATCH_OF_MANY + LadderLanes::WIDEST_VECTOR) {
            LadderFilter filter;
            filter.init(FILTER_LADDER_START_MARKER, 0.0F);
            filter.set_octaves_cutoff(5.0F);
            filter.set_resonance(0.5F);
            filter.update();
            coefficients = filter.get_coefficients();
            for (uint32_t i = 0; i < size; i++)
                memory_rows[i] = &memory[i];
        }
        Signals signals;
        std::vector<LadderMemory> memory;
        LadderCoefficients coefficients;
        std::vector<LadderMemory*> memory_rows;
        std::vector<const LadderCoefficients*> coefficient_rows;
        std::vector<float> scratch;
    };
    const auto batch = std::make_shared<Batch>(count);
    return {"ladder, " + voices(count), KernelRow::CYCLES, double(count) * LENGTH, [batch, count] {
                void* aligned = batch->scratch.data();
                size_t space = batch->scratch.size() * sizeof(float);
                std::align(64, LadderLanes::SCRATCH_OF_MANY * sizeof(float), aligned, space);
                kernels().ladder_lanes({batch->signals.rows.data(), batch->memory_rows.data(),
                                        batch->coefficient_rows.data(), count,
                                        static_cast<float*>(aligned)},
                                       0, LENGTH);
            }};
}

KernelRow biquad_row(uint32_t count) {
    struct Batch {
        explicit Batch(uint32_t size)
            : signals(size), states(size_t(size) * BiquadLanes::MAX_DEPTH), state_rows(size),
              coefficient_rows(size, &coefficients) {
            for (uint32_t i = 0; i < size; i++)
                state_rows[i] = &states[size_t(i) * BiquadLanes::MAX_DEPTH];
        }
        Signals signals;
        std::vector<BiquadState> states;
        // A low-pass at 1 kHz.
        BiquadCoefficients coefficients = {0.0046F, 0.0092F, 0.0046F, -1.799F, 0.8175F, {}};
        std::vector<BiquadState*> state_rows;
        std::vector<const BiquadCoefficients*> coefficient_rows;
    };
    const auto batch = std::make_shared<Batch>(count);
    return {"biquad of 4 sections, " + voices(count), KernelRow::CYCLES, double(count) * LENGTH,
            [batch, count] {
                kernels().biquad_lanes({batch->signals.rows.data(), batch->state_rows.data(),
                                        batch->coefficient_rows.data(), count,
                                        BiquadLanes::MAX_DEPTH},
                                       0, LENGTH);
            }};
}

} // namespace

std::vector<KernelRow> filter_rows() {
    return {ladder_row(1), ladder_row(4), ladder_row(16), ladder_row(96),
            biquad_row(1), biquad_row(4), biquad_row(32)};
}

} // namespace tarquil
