// The numbering of all sound parameters.

#pragma once

inline constexpr unsigned NUM_CONTROLLERS = 206;

enum ControllerNumber : unsigned {
#define CONTROLLER(number, enumerator, ...) CTRL_##enumerator = number,
#include "softsynth/controllers.def"
#undef CONTROLLER
};
