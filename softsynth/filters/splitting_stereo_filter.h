// A crossover: splits a stereo signal into the bands below and above a frequency.
//
// A cascade of cookbook low-passes for the lower band and of high-passes for the upper (filter.h),
// which share their denominator.  The bands do not sum to a flat response; the dip or rise at the
// crossover belongs to the sound.  Stable for every frequency and resonance that Filter takes.

#pragma once

#include <cstdint>

#include "softsynth/filters/filter.h"
#include "softsynth/kernels/crossover.h"

namespace tarquil {

class SplittingStereoFilter {
  public:
    // `stages` sections per band, 0 to 4; clears the history.
    void init(int stages);

    // Both buffers hold the same `frames` interleaved stereo frames and end as the band below
    // (`low_out`) and above (`in_out`) the crossover.  `omega` in radians per sample, `resonance`
    // the Q of the whole cascade.
    void render(float* low_out, float* in_out, uint32_t frames, float omega, float resonance);

    // True when the history is 0 throughout.
    [[nodiscard]] bool is_empty() const;

  private:
    void clear_history();

    // settings
    Filter low_pass;
    Filter high_pass;

    // coefficients and memory
    Crossover crossover;
};

} // namespace tarquil
