// The numbering of all sound parameters.

#pragma once

namespace tarquil {

inline constexpr unsigned NUM_CONTROLLERS = 206;

enum ControllerNumber : unsigned {
#define CONTROLLER(number, enumerator, ...) CTRL_##enumerator = number,
#include "softsynth/parameters/controllers.def"
#undef CONTROLLER
};

} // namespace tarquil
