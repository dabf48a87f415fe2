// How compressors take their settings.

#pragma once

namespace tarquil {

// The exponent of the gain curve, 1 / ratio - 1; a ratio above 63 limits (-1).
inline float compressor_inv_ratio_minus_one(float ratio) {
    constexpr float MAX_FINITE_RATIO = 63.0F;
    return ratio > MAX_FINITE_RATIO ? -1.0F : 1.0F / ratio - 1.0F;
}

// The ratio that acts: infinite for one that limits.
inline double compressor_ratio(float ratio) {
    return 1.0 / (1.0 + double(compressor_inv_ratio_minus_one(ratio)));
}

} // namespace tarquil
