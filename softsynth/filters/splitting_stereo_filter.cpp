// A crossover: splits a stereo signal into the bands below and above a frequency.

#include "softsynth/filters/splitting_stereo_filter.h"

#include <algorithm>
#include <iterator>

#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

void SplittingStereoFilter::init(int stages) {
    low_pass.init(FILTER_LOWPASS, 0, stages, 0.0F);
    high_pass.init(FILTER_HIGHPASS, 0, stages, 0.0F);
    crossover.num_stages = stages;
    clear_history();
}

void SplittingStereoFilter::clear_history() {
    for (Crossover::Section& section : crossover.sections)
        section = {};
}

void SplittingStereoFilter::render(float* low_out, float* in_out, uint32_t frames, float omega,
                                   float resonance) {
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
    kernels().split_bands(crossover, low_out, in_out, frames);
    for (const Crossover::Section& section : crossover.sections) {
        if (!all_finite(section.z1, Crossover::SIGNALS) ||
            !all_finite(section.z2, Crossover::SIGNALS)) {
            clear_history();
            return;
        }
    }
}

bool SplittingStereoFilter::is_empty() const {
    return std::all_of(std::begin(crossover.sections), std::end(crossover.sections),
                       [](const Crossover::Section& section) {
                           return all_zero(section.z1, Crossover::SIGNALS) &&
                                  all_zero(section.z2, Crossover::SIGNALS);
                       });
}

} // namespace tarquil
