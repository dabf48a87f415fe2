// A MIDI message of any length as one record, for queues of the engine's events.
//
// Channel messages stay as they are.  Of a system exclusive message what the dialect knows of it is
// kept, and of all else only what it is.  Statuses below 0x80 are free for the queue's own use.

#pragma once

#include <cstdint>
#include <span>

#include "midi/gm/sysex.h"
#include "midi/midi_message.h"

namespace tarquil {

// 0xF0 + SysexKind: a system exclusive message.
inline constexpr uint8_t GM_SYSEX = 0xF0;
// No message of MIDI's: lets all keys and pedals go.
inline constexpr uint8_t GM_RELEASE_ALL = 0xFD;
inline constexpr uint8_t GM_DAMAGED = 0xFE;
inline constexpr uint8_t GM_OTHER_SYSTEM = 0xFF;

// `message`: a status byte and its data, or a whole system exclusive message.
midi_event gm_message(uint32_t time, std::span<const uint8_t> message);

// What a record of GM_SYSEX stands for.
SysexMessage sysex_of(const midi_event& record);

} // namespace tarquil
