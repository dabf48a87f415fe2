// The channel distortion's waveshaper.

#include "softsynth/effects/distortion.h"

namespace tarquil {

namespace {

// The drive's last steps (20 at the top) become a hard clip.
constexpr float MAX_SOFT_GAIN = 19.7F;

} // namespace

void distortion_calc_param(float threshold, float gain, float asymmetry, float* slope,
                           float* dc_offset, float* knee_a, float* knee_b) {
    *slope = gain > MAX_SOFT_GAIN ? 0.0F : 1.0F / gain;
    *knee_a = 1.5F - 0.5F * *slope;
    *knee_b = (1.0F - *slope) / (2.0F * threshold * threshold);
    *dc_offset = distortion(0.0F, threshold, asymmetry, *slope, 0.0F, *knee_a, *knee_b);
}

} // namespace tarquil
