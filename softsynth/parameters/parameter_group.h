// The groups in which hosts list the parameters.

#pragma once

#include <string_view>

namespace tarquil {

// Where a controller with a row belongs, for people: "Program/Oscillator 1", "Bank/Reverb".
std::string_view parameter_group(unsigned number);

} // namespace tarquil
