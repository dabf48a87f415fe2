// A General MIDI set: what plays beside a bank of melodic sounds.

#pragma once

#include <array>
#include <memory>
#include <string>

#include "instrument/settings.h"
#include "midi/gm/gm_map.h"

namespace tarquil {

struct GmSet {
    GmMap map;                           // laws of the melodic sounds and the drums; kits
    std::unique_ptr<TarqSettings> drums; // null: no drums
    // The sounds that the melodic laws are for, by name: each holds where its program bears that
    // name; empty: for any.
    std::array<std::string, GM_PROGRAMS> names;
    // The same of a second bank; here an empty name stands for none.
    SoundRules guest_rules;
    std::array<std::string, GM_PROGRAMS> guest_names;
};

} // namespace tarquil
