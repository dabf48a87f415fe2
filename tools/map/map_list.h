// What a General MIDI set says, as text.

#pragma once

#include <string>

#include "midi/gm/gm_map.h"

namespace tarquil {

// "families 2, kits 3, drums 14, laws 5".
std::string map_summary(const GmMap& map);

// A line for each law, vibrato and drum.
std::string list_map(const GmMap& map);

} // namespace tarquil
