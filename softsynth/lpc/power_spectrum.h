// The power spectrum of a stretch of sound.

#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "softsynth/lpc/speech_frame.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

inline constexpr size_t SPECTRUM_LENGTH = 2048; // samples
inline constexpr double SPECTRUM_BIN_HZ = double(SAMPLE_RATE) / double(SPECTRUM_LENGTH);

// |X|^2 from 0 Hz to half the sample rate.
using PowerSpectrum = std::array<double, SPECTRUM_LENGTH / 2 + 1>;

// Of the sound of a frame and half of each neighbour, under a Hann window whose squares add up to
// 1: white noise of power 1 gives 1 everywhere.  What lies outside `samples` counts as silence.
PowerSpectrum power_spectrum(std::span<const float> samples, size_t frame);

} // namespace tarquil
