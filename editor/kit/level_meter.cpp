// How a meter moves.

#include "editor/kit/level_meter.h"

#include <algorithm>
#include <cmath>

namespace tarquil {

void LevelMeter::update(const std::array<float, 2>& peaks, double seconds) {
    constexpr double FALL = 24.0; // dB per second
    constexpr double HOLD_SECONDS = 1.5;
    for (unsigned side = 0; side < 2; side++) {
        const double peak = 20.0 * std::log10(std::max(double(peaks[side]), 1e-6));
        clipped = clipped || peaks[side] >= 1.0F;
        levels[side] = std::max({peak, levels[side] - FALL * seconds, QUIETEST});
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
