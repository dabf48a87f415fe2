// The channel distortion's waveshaper.
//
// Own design.  Linear with slope s = 1 / g beyond the threshold t, a cubic through the origin in
// between that meets both lines with equal value t and equal slope s:
//
//   u = x + a
//   y = (u - t) s + t                     u > t
//   y = (u + t) s - t                     u < -t
//   y = (A - B u^2) u                     else, A = 1.5 - 0.5 s, B = (1 - s) / (2 t^2)
//
// minus the curve's value at u = a, so that silence stays silent under the asymmetry a.  Levels are
// linear; t >= 0.001, drive g = 1 (linear) to 20 (s = 0, a hard clip), a 0 to 1.  Memoryless.

#pragma once

namespace tarquil {

// The curve's coefficients for threshold t, drive g and asymmetry a: slope s, offset at silence,
// knee_a A and knee_b B.
void distortion_calc_param(float threshold, float gain, float asymmetry, float* slope,
                           float* dc_offset, float* knee_a, float* knee_b);

inline float distortion(float x, float threshold, float asymmetry, float slope, float dc_offset,
                        float knee_a, float knee_b) {
    const float u = x + asymmetry;
    float y = 0.0F;
    if (u > threshold)
        y = (u - threshold) * slope + threshold;
    else if (u < -threshold)
        y = (u + threshold) * slope - threshold;
    else
        y = (knee_a - knee_b * (u * u)) * u;
    return y - dc_offset;
}

} // namespace tarquil
