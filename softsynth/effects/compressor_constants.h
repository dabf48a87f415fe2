// Constants of the compressors' detectors.

#pragma once

namespace tarquil {

// Level and peak after a reset, linear.
inline constexpr float COMPRESSOR_START_LEVEL = 0.1F;

// -80 dB: level and peak never fall below it, so that a doubling attack always gets off the ground.
inline constexpr float COMPRESSOR_MIN_LEVEL = 0.0001F;

// Per sample: 2^(-1 / (0.003 * 44100 + 1)).
inline constexpr float COMPRESSOR_PEAK_INCREMENT = 0.99481362F;

} // namespace tarquil
