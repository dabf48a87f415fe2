// The biquad cascade on interleaved stereo, for the master section.

#pragma once

#include <cstdint>

#include "softsynth/filters/filter.h"

namespace tarquil {

// Formulas, units and stable range are those of Filter, whose own state is not used.
class StereoFilter : public Filter {
  public:
    // As Filter::init without waveshaper and key follow; clears the stereo state.
    void init(FilterType new_type, int new_depth);

    // Filters n frames, interleaved left/right, in place.  `omega` in radians per sample, `gain` as
    // for set_dbgain_normalized.
    void render(float* buf, uint32_t n, float omega, float q, float gain);

  private:
    // Runs the sections over n frames.
    void run(float* buf, uint32_t n);
    // True when a frame of silence gives silence and changes no state.
    bool is_at_rest();

    State left[MAX_DEPTH];
    State right[MAX_DEPTH];
};

} // namespace tarquil
