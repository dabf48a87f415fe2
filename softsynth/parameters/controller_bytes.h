// One byte for every controller number.

#pragma once

#include <array>
#include <cstdint>

#include "softsynth/parameters/controller_number.h"

namespace tarquil {

// Indexed by controller number; 0..127.
using ControllerBytes = std::array<uint8_t, NUM_CONTROLLERS>;

// The default of every controller, 0 for numbers without one.
const ControllerBytes& default_controller_bytes();

} // namespace tarquil
