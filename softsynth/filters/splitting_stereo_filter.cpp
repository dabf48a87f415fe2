// A crossover: splits a stereo signal into the bands below and above a frequency.

#include "softsynth/filters/splitting_stereo_filter.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr uint32_t NUM_STATES = uint32_t(Crossover::STAGES * Crossover::SIGNALS);

} // namespace

SplittingStereoFilter::SplittingStereoFilter() {
    low_pass.init(FILTER_LOWPASS, 0, Crossover::STAGES, 0.0F);
    high_pass.init(FILTER_HIGHPASS, 0, Crossover::STAGES, 0.0F);
}

void SplittingStereoFilter::clear_history() {
    std::fill_n(crossover.z1[0], NUM_STATES, 0.0F);
    std::fill_n(crossover.z2[0], NUM_STATES, 0.0F);
}

void SplittingStereoFilter::set(float omega, float resonance) {
    for (Filter* filter : {&low_pass, &high_pass}) {
        filter->set_linear_cutoff(omega);
        filter->set_resonance(resonance);
        filter->update();
    }
    // Both numerators are symmetric (b2 = b0), both denominators the same.
    for (int side : {0, 1}) {
        crossover.b0[side] = low_pass.b0;
        crossover.b1[side] = low_pass.b1;
        crossover.b0[2 + side] = high_pass.b0;
        crossover.b1[2 + side] = high_pass.b1;
    }
    crossover.a1 = low_pass.a1;
    crossover.a2 = low_pass.a2;
}

void SplittingStereoFilter::render(std::span<SplittingStereoFilter> crossovers, float* const* low,
                                   float* high, uint32_t frames) {
    TARQ_ASSERT(!crossovers.empty() && crossovers.size() <= BandSplit::MAX_CROSSOVERS);
    BandSplit split = {{}, {}, high, uint32_t(crossovers.size())};
    for (uint32_t b = 0; b < split.count; b++) {
        split.crossovers[b] = &crossovers[b].crossover;
        split.low[b] = low[b];
    }
    kernels().split_bands(split, frames);
    for (SplittingStereoFilter& filter : crossovers) {
        if (!all_finite(filter.crossover.z1[0], NUM_STATES) ||
            !all_finite(filter.crossover.z2[0], NUM_STATES))
            filter.clear_history();
    }
}

bool SplittingStereoFilter::is_empty() const {
    return all_zero(crossover.z1[0], NUM_STATES) && all_zero(crossover.z2[0], NUM_STATES);
}

} // namespace tarquil
