// The power spectrum of a stretch of sound.

#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "softsynth/parameters/constants.h"

namespace tarquil {

inline constexpr size_t SPECTRUM_LENGTH = 2048; // samples
inline constexpr double SPECTRUM_BIN_HZ = double(SAMPLE_RATE) / double(SPECTRUM_LENGTH);

// |X|^2 from 0 Hz to half the sample rate.
using PowerSpectrum = std::array<double, SPECTRUM_LENGTH / 2 + 1>;

// Of up to SPECTRUM_LENGTH samples, under a Hann window of squares that add up to 1 and that is
// centred on `centre`; what lies outside `samples` counts as silence.  White noise of power 1 gives
// 1 everywhere.
PowerSpectrum power_spectrum(std::span<const float> samples, long centre, size_t window_length);

} // namespace tarquil
