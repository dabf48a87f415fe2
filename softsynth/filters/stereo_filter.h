// The second-order section on interleaved stereo, for the master section.

#pragma once

#include <cstdint>
#include <span>

#include "softsynth/filters/filter.h"

namespace tarquil {

// Formulas, units and stable range are those of Filter, whose own state is not used.
class StereoFilter : public Filter {
  public:
    // Clears the stereo state.
    void init(FilterType new_type);

    // `omega` in radians per sample, `gain` as for set_dbgain_normalized.
    void set(float omega, float q, float gain);

    // Filters n frames, interleaved left/right, in place, by up to BiquadSeries::MAX_SECTIONS
    // filters of a type, one behind the other.
    static void render(std::span<StereoFilter* const> filters, float* buf, uint32_t n);

  private:
    static constexpr int CHANNELS = 2;

    static void run(std::span<StereoFilter* const> filters, float* buf, uint32_t n);
    void clear();
    // True when a frame of silence gives silence and changes no state.
    static bool are_at_rest(std::span<StereoFilter* const> filters);

    State sides[CHANNELS];
};

} // namespace tarquil
