// Lowering of a recording's sample rate by powers of two.

#pragma once

#include <cstddef>
#include <vector>

namespace tarquil {

// A linear-phase half-band lowpass: symmetric, coefficient k equals coefficient 47 - k.
inline constexpr size_t NUM_HALFBAND_COEFS = 48;
extern const double halfband_filter_coefs[NUM_HALFBAND_COEFS];

// Filters the N samples of `x` with the H_size coefficients `h` (at most 64) and keeps every Mth
// result, the last of each M inputs; `y` gets N / M samples, those left over are dropped.  The
// input before `x` counts as silence.  1 <= M <= H_size; `x` lies outside `y`.
void decimate(size_t M, size_t H_size, const double* h, size_t N, const float* x,
              std::vector<float>& y);

// Converts `samples` in place between rates in Hz.  Offered are equal rates and division by 2, 4,
// 8, ...; false, and `samples` untouched, for any other.
bool resample(std::vector<float>& samples, float from_rate, float to_rate);

} // namespace tarquil
