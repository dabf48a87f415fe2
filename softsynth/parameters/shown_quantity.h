// Quantities in the units that musicians count in, where the engine's own are others: percent of a
// whole, left and right, cents, degrees.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/unit.h"

namespace tarquil {

// `quantity` of controller `number`, which is in `unit`; nothing where that is how it is shown.
std::optional<std::string> musical_text(unsigned number, double quantity, Unit unit);

// The quantity that a text of that kind means, "50 %", "30 L" or "-5 ct", with or without its unit;
// nothing where it means none, or no such kind is shown.
std::optional<double> parse_musical(unsigned number, std::string_view text, Unit unit);

} // namespace tarquil
