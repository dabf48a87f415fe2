// A straight line in floats, as adding one step after the other rounds it.

#pragma once

#include <cstdint>

namespace tarquil {

// Writes value, value + step, (value + step) + step and so on.
void render_slope(float* out, uint32_t count, float value, float step);

} // namespace tarquil
