// The peak detectors and level followers of several compressors, as their kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

// Up to four detectors side by side (compressor.h has the formulas).  The kernel writes the level
// of detector d at frame i to levels[SIGNALS * i + d] and leaves what belongs to no detector.
struct LevelDetectors {
    static constexpr uint32_t SIGNALS = 4;

    uint32_t count = 0; // 1..SIGNALS

    // Interleaved stereo; the louder side is detected.
    const float* frames[SIGNALS] = {};

    // settings, per sample
    float attack_factor[SIGNALS] = {};
    float release_factor[SIGNALS] = {};

    // memory
    float peak[SIGNALS] = {};
    float level[SIGNALS] = {};
};

} // namespace tarquil
