// What a frame's filter does to a spectrum: its response and its resonances.

#pragma once

#include <vector>

#include "softsynth/lpc/speech.h"

namespace tarquil {

// The power density of the frame's sound at `hz` in dB, as white noise of power 1 has 0 dB;
// -infinity for a silent frame.
double frame_density_db(const SpeechFrame& frame, double warping, double hz);

// The frequencies in Hz, ascending, at which the response has its maxima; at most half as many as
// there are poles.
std::vector<double> find_formants(const SpeechFrame& frame, double warping, double highest_hz);

} // namespace tarquil
