// Outputs of a 2:1 decimator, for floats or for lanes of them.

#pragma once

#include "softsynth/filters/resampler.h"

namespace tarquil {

// `n` outputs through a symmetric kernel of 26 taps; the first one's newest sample is *newest, with
// 25 older ones before it.  Several sums at a time, since each waits for its own last addition.
// Internal linkage, since kernels of every
// instruction set use it.
template <int AT_ONCE = 4, typename Value>
static inline void half_band_sums(const Value* newest, const float* kernel, Value* out, int n) {
    constexpr int LAST_TAP = 2 * int(RESAMPLE_HALF_TAPS) - 1;
    int i = 0;
    for (; i + AT_ONCE <= n; i += AT_ONCE) {
        Value sums[AT_ONCE] = {};
        for (int j = 0; j < int(RESAMPLE_HALF_TAPS); j++) {
            for (int k = 0; k < AT_ONCE; k++)
                sums[k] = sums[k] + (newest[2 * (i + k) + j - LAST_TAP] + newest[2 * (i + k) - j]) *
                                        kernel[j];
        }
        for (int k = 0; k < AT_ONCE; k++)
            out[i + k] = sums[k];
    }
    if constexpr (AT_ONCE > 1) {
        if (i < n)
            half_band_sums<1>(newest + 2 * i, kernel, out + i, n - i);
    }
}

} // namespace tarquil
