// The sounds that the General MIDI dialect plays: read-only views of two banks.

#pragma once

#include <array>

#include "instrument/controller_bytes.h"

namespace tarquil {

inline constexpr unsigned GM_PROGRAMS = 128;

// Null where there is no sound; what they point to outlives the dialect's use of it.
struct GmSounds {
    std::array<const ControllerBytes*, GM_PROGRAMS> melodic{};
    std::array<const ControllerBytes*, GM_PROGRAMS> drums{};
    const ControllerBytes* globals = nullptr; // of the melodic bank
};

} // namespace tarquil
