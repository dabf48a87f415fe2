// In General MIDI channel 10 plays drum kits, none of the bank's programs.

#pragma once

namespace tarquil {

inline constexpr unsigned RHYTHM_CHANNEL = 9;

} // namespace tarquil
