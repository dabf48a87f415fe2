// The shipped sounds as hosts offer them in their browsers.

#pragma once

#include <array>
#include <string_view>

#include "sounds/shipped_sounds.h"

namespace tarquil {

struct PresetBank {
    const char* symbol; // for ever: hosts keep it in their indices
    const char* name;
    const TarqSettings& (*bank)();
};

inline constexpr std::array<PresetBank, 2> PRESET_BANKS = {
    {{"gm", "General MIDI", shipped_gm_bank}, {"originals", "Originals", shipped_originals}}};

} // namespace tarquil
