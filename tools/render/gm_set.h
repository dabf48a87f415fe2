// The General MIDI set that a render plays: a map and the banks that it names.

#pragma once

#include <string>

#include "instrument/settings.h"
#include "midi/gm/gm_map.h"

namespace tarquil {

struct GmSet {
    GmMap map;
    TarqSettings drums;
    bool has_map = false;
    bool has_drums = false;
};

// Loads the map at `path`, its drum bank into the set and its melodic bank into `melodic`; names
// that it gives are relative to its folder.  BadInput when something is missing or wrong. `report`,
// if given, learns what the banks lacked.
void load_gm_set(const std::string& path, GmSet& set, TarqSettings& melodic,
                 LoadReport* report = nullptr);

} // namespace tarquil
