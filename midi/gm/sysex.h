// System exclusive messages that General MIDI players know.

#pragma once

#include <cstdint>
#include <span>

namespace tarquil {

enum class SysexKind : uint8_t {
    UNKNOWN,
    GM_ON,
    GM_OFF,
    GM2_ON,
    GS_RESET,
    XG_ON,
    MASTER_VOLUME,  // value of 14 bits
    MASTER_BALANCE, // value of 14 bits around 8192
    MASTER_FINE,    // value of 14 bits around 8192: +-100 cents
    MASTER_COARSE,  // value: semitones around 64
    GS_RHYTHM_PART, // value 0: melodic, else a drum map, of `channel`
    GS_VOLUME,      // value 0..127
};
inline constexpr SysexKind LAST_SYSEX_KIND = SysexKind::GS_VOLUME;

struct SysexMessage {
    SysexKind kind = SysexKind::UNKNOWN;
    unsigned value = 0;
    unsigned channel = 0; // 0..15
};

// Reads a whole message, from 0xF0 to 0xF7.  A GS message with a wrong check sum is unknown.
SysexMessage read_sysex(std::span<const uint8_t> bytes);

} // namespace tarquil
