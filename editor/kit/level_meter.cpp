// How a meter moves.

#include "editor/kit/level_meter.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

namespace {

double decibels(float level) {
    return 20.0 * std::log10(std::max(double(level), 1e-6));
}

} // namespace

void LevelMeter::update(const std::array<float, 2>& peaks, double seconds) {
    constexpr double FALL = 24.0; // dB per second
    constexpr double HOLD_SECONDS = 1.5;
    const double highest = decibels(std::max(peaks[0], peaks[1]));
    since_peak += seconds;
    if (highest >= peak || since_peak > PEAK_SECONDS) {
        peak = highest;
        since_peak = 0.0;
    }
    for (unsigned side = 0; side < 2; side++) {
        clipped = clipped || peaks[side] >= 1.0F;
        levels[side] = std::max({decibels(peaks[side]), levels[side] - FALL * seconds, QUIETEST});
        held_for[side] += seconds;
        if (levels[side] >= holds[side]) {
            holds[side] = levels[side];
            held_for[side] = 0.0;
        } else if (held_for[side] > HOLD_SECONDS) {
            holds[side] = std::max(levels[side], holds[side] - FALL * seconds);
        }
    }
}

} // namespace tarquil
