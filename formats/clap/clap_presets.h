// The shipped sounds as presets of the host's browser.

#pragma once

#include <string_view>

#include "formats/clap/abi/preset_discovery.h"
#include "instrument/instrument.h"

namespace tarquil {

extern const ClapPresetDiscoveryFactory CLAP_PRESETS;

// The sound with this load key ("gm/12"); null for none.
const Instrument* find_clap_preset(std::string_view load_key);

} // namespace tarquil
