// What a host's sample rate does to a plug-in that plays at one rate only.

#pragma once

#include <string>

namespace tarquil {

// For people: how far out of tune and time it plays at `rate` Hz; empty at its own rate, or at
// none.
std::string rate_warning(double rate);

} // namespace tarquil
