// The course of an instrument's envelopes, from the engine's own.

#pragma once

#include <vector>

#include "curves/plot_point.h"
#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// Level over time in seconds after the note-on, from 0 to the end of the release.
// `index` 0..2; the note is held for `hold` seconds (0 to MAX_HOLD) and its velocity is 127.
std::vector<PlotPoint> envelope_points(const ControllerBytes& bytes, unsigned index, double hold);

inline constexpr double MAX_HOLD = 60.0;

} // namespace tarquil
