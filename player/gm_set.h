// A General MIDI set: what plays beside a bank of melodic sounds.

#pragma once

#include <memory>

#include "instrument/settings.h"
#include "midi/gm/gm_map.h"

namespace tarquil {

struct GmSet {
    GmMap map;                           // laws of the melodic sounds and the drums; kits
    std::unique_ptr<TarqSettings> drums; // null: no drums
};

} // namespace tarquil
