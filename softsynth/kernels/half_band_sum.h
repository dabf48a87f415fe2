// One output of a 2:1 decimator, for a float or for lanes of them.

#pragma once

#include "softsynth/resampler.h"

// The newest sample and the 25 before it, which lie `step` values apart, through a symmetric kernel
// of 26 taps.  Internal linkage, since kernels of every instruction set use it.
template <typename Value>
static inline Value half_band_sum(const Value* newest, int step, const float* kernel) {
    Value sum = {};
    for (int j = 0; j < int(RESAMPLE_HALF_TAPS); j++)
        sum = sum + (newest[(j - 2 * int(RESAMPLE_HALF_TAPS) + 1) * step] + newest[-j * step]) *
                        kernel[j];
    return sum;
}
