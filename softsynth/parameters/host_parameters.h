// The order in which hosts see the parameters: the rows of the controller table, then one without a
// controller.

#pragma once

#include <optional>

#include "softsynth/parameters/controller_table.h"

namespace tarquil {

inline constexpr int NUM_HOST_PARAMETERS = int(NUM_KEYED_CONTROLLERS) + 1;

// The controller of parameter `index`, 0 up to NUM_HOST_PARAMETERS; 0, which has no row, for the
// last.
unsigned host_parameter_controller(int index);

// The parameter of a controller that has a row.
std::optional<int> find_host_parameter(unsigned controller);

// Its text key; empty for the last.
const char* host_parameter_key(int index);

// A pitch bend lives in the events.
bool is_automatable_controller(unsigned controller);

} // namespace tarquil
