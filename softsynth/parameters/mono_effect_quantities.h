// What the parameters of the insert effects stand for, from their bytes 0..127.

#pragma once

#include <algorithm>

#include "softsynth/parameters/compressor_quantities.h"
#include "softsynth/parameters/effect_parameter.h"
#include "softsynth/parameters/filter_type.h"

namespace tarquil {

// Thresholds and gains are linear, times in seconds.

inline float mono_effect_threshold(int p) {
    constexpr float CUBE_ROOT_MAX_THRESHOLD = 1.145F; // 1.5
    return cubed(part_of(CUBE_ROOT_MAX_THRESHOLD, p));
}

inline float distortion_threshold(int p) {
    constexpr float MIN_DISTORTION_THRESHOLD = 0.001F; // its square is a divisor
    return std::max(mono_effect_threshold(p), MIN_DISTORTION_THRESHOLD);
}

// 1..20
inline float distortion_drive(int p) {
    constexpr float CUBE_ROOT_DRIVE_RANGE = 1.7144F; // (1 + it)^3 = 20
    return cubed(1.0F + part_of(CUBE_ROOT_DRIVE_RANGE, p));
}

// The curve's slope beyond the threshold; the drive's last steps become a hard clip.
inline float distortion_slope(float drive) {
    constexpr float MAX_SOFT_DRIVE = 19.7F;
    return drive > MAX_SOFT_DRIVE ? 0.0F : 1.0F / drive;
}

// The drive that acts: infinite for a hard clip.
inline double distortion_effective_drive(int p) {
    return 1.0 / double(distortion_slope(distortion_drive(p)));
}

// 0..8
inline float distortion_post_gain(int p) {
    constexpr float CUBE_ROOT_MAX_POST_GAIN = 2.0F;
    return cubed(part_of(CUBE_ROOT_MAX_POST_GAIN, p));
}

inline float distortion_asymmetry(int p) {
    return part_of(1.0F, p);
}

// 1..64
inline float mono_compressor_ratio(int p) {
    constexpr float CUBE_ROOT_RATIO_RANGE = 3.0F; // (1 + it)^3 = 64
    return cubed(1.0F + part_of(CUBE_ROOT_RATIO_RANGE, p));
}

inline double mono_compressor_effective_ratio(int p) {
    return compressor_ratio(mono_compressor_ratio(p));
}

inline constexpr float CUBE_ROOT_20_MS = 0.27144F; // in seconds

inline float mono_compressor_attack(int p) {
    return cubed(part_of(CUBE_ROOT_20_MS, p));
}

// 20 ms..1 s
inline float mono_compressor_release(int p) {
    constexpr float CUBE_ROOT_RELEASE_RANGE = 0.72856F;
    return cubed(CUBE_ROOT_20_MS + part_of(CUBE_ROOT_RELEASE_RANGE, p));
}

// 0..20
inline float mono_compressor_makeup(int p) {
    constexpr float CUBE_ROOT_MAX_MAKEUP = 2.715F;
    return cubed(part_of(CUBE_ROOT_MAX_MAKEUP, p));
}

// Lowest of the 24 bits that are cleared: 0..24.
inline int lofi_bits_off(int p) {
    constexpr int MAX_BITS_OFF = 24;
    return p * MAX_BITS_OFF / 127;
}

// Samples that one is held for: 1..128.
inline int lofi_period(int p) {
    return p + 1;
}

inline FilterType mono_filter_type(int p) {
    return FilterType(p % FILTER_LADDER_END_MARKER);
}

// Sections 0..4.
inline int mono_filter_depth(int p) {
    return p % (MAX_FILTER_DEPTH + 1);
}

// -1..1
inline float exciter_amount(int p) {
    return cubed(float(p) / 64.0F - 1.0F);
}

} // namespace tarquil
