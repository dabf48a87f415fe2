// Reading of a General MIDI set: a map and the banks that it names.

#pragma once

#include <string>

#include "player/gm_set.h"

namespace tarquil {

// Loads the map at `path`, its drum bank into the set and its melodic bank into `melodic`; names
// that it gives are relative to its folder.  BadInput when something is missing or wrong. `report`,
// if given, learns what the banks lacked.
void load_gm_set(const std::string& path, GmSet& set, TarqSettings& melodic,
                 LoadReport* report = nullptr);

} // namespace tarquil
