// The sources of the banks that come with the program: readable texts, put together.
//
//   gm/<family>/NNN_<name>.tqi     General MIDI program NNN; one without a text is the default
//   sound gm/globals.txt, gm/laws.txt    the bank's effects; the programs' laws, lines of a map
//   drums/NNN_<name>.tqi           instrument NNN of the drum bank
//   drums/kits.txt                 families and kits, lines of a map
//   originals/order.txt            "NNN <category>/<name>.tqi": which program each text is
//   originals/globals.txt, originals/laws.txt    that bank's effects, its programs' laws
//
// A file of settings that is not there says nothing.

#pragma once

#include <string>

#include "instrument/settings.h"
#include "midi/gm/gm_map.h"

namespace tarquil {

struct SoundSources {
    TarqSettings gm;
    TarqSettings drums;
    TarqSettings originals;
    std::string map_text;
    GmMap map;
    std::string originals_map_text; // with the same drums and kits
};

// Reads all below `folder` and checks it: keys that nothing knows, values out of range, drums of
// one family that disagree and keys without a drum are BadInput.
SoundSources read_sound_sources(const std::string& folder);

} // namespace tarquil
