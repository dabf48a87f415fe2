// What both compressors share: the gain curve, the peak detector and the level follower.
//
// Own design.  A peak detector p jumps up to |x| and halves every 3 ms; the level e follows it
// exponentially, doubling or halving every (time in samples + 1) samples:
//
//   p <- max(p, |x|)         before the level moves
//   e <- max(e * 2^(-1 / (release * 44100 + 1)), 0.0001)     while p <= e
//   e <- min(e * 2^(1 / (attack * 44100 + 1)), p)            otherwise
//   p <- max(p * 2^(-1 / (0.003 * 44100 + 1)), 0.0001)
//
// The gain is a straight line with a hard corner on a dB scale: m * (e / t)^(1 / r - 1) above the
// threshold t, m below it (threshold t and level e linear, ratio r >= 1, makeup gain m linear).
// Stable for every time >= 0; a finite input keeps p and e finite.

#pragma once

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "softsynth/effects/compressor_constants.h"
#include "softsynth/parameters/compressor_quantities.h"

namespace tarquil {

// Growth of the level per sample for an attack time in seconds; 0 jumps to the peak at once.
float compressor_attack_factor(float attack_seconds);

// Decay of the level per sample for a release time in seconds.
float compressor_release_factor(float release_seconds);

// The gain at `level`, everything linear.  A threshold of 0 (its inverse infinite) gives the gain 0
// unless the ratio is 1.
inline float compressor_knee(float level, float threshold, float inv_threshold,
                             float inv_ratio_minus_one, float makeup_gain) {
    TARQ_ASSERT(inv_ratio_minus_one <= 0.0f);
    if (level > threshold && inv_ratio_minus_one < 0.0F)
        return std::pow(level * inv_threshold, inv_ratio_minus_one) * makeup_gain;
    return makeup_gain;
}

// One sample of the level follower.
inline float compressor_next_level(float level, float peak, float attack_factor,
                                   float release_factor) {
    if (peak <= level)
        return std::max(level * release_factor, COMPRESSOR_MIN_LEVEL);
    return std::min(level * attack_factor, peak);
}

// One sample of the peak detector's decay.
inline float compressor_decayed_peak(float peak) {
    return std::max(peak * COMPRESSOR_PEAK_INCREMENT, COMPRESSOR_MIN_LEVEL);
}

} // namespace tarquil
