// A crossover: splits a stereo signal into the bands below and above a frequency.
//
// A cascade of cookbook low-passes for the lower band and of high-passes for the upper (filter.h),
// which share their denominator.  The bands do not sum to a flat response; the dip or rise at the
// crossover belongs to the sound.  Stable for every frequency and resonance that Filter takes.

#pragma once

#include <cstdint>
#include <span>

#include "softsynth/filters/filter.h"
#include "softsynth/kernels/crossover.h"

namespace tarquil {

class SplittingStereoFilter {
  public:
    SplittingStereoFilter();

    void clear_history();

    // `omega` in radians per sample, `resonance` the Q of the whole cascade.
    void set(float omega, float resonance);

    // Splits `frames` interleaved stereo frames in `high`, up to BandSplit::MAX_CROSSOVERS times:
    // what lies below crossover b goes into low[b], what lies above all of them stays.
    static void render(std::span<SplittingStereoFilter> crossovers, float* const* low, float* high,
                       uint32_t frames);

    // True when the history is 0 throughout.
    [[nodiscard]] bool is_empty() const;

  private:
    // settings
    Filter low_pass;
    Filter high_pass;

    // coefficients and memory
    Crossover crossover;
};

} // namespace tarquil
