// The channel distortion's waveshaper.

#include "softsynth/effects/distortion.h"

#include "softsynth/parameters/mono_effect_quantities.h"

namespace tarquil {

void distortion_calc_param(float threshold, float gain, float asymmetry, float* slope,
                           float* dc_offset, float* knee_a, float* knee_b) {
    *slope = distortion_slope(gain);
    *knee_a = 1.5F - 0.5F * *slope;
    *knee_b = (1.0F - *slope) / (2.0F * threshold * threshold);
    *dc_offset = distortion(0.0F, threshold, asymmetry, *slope, 0.0F, *knee_a, *knee_b);
}

} // namespace tarquil
