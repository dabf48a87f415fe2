// Translation of raw MIDI messages into the engine's vocabulary.

#pragma once

#include <cstdint>

#include "midi/midi_message.h"

namespace tarquil {

// The most events that one message becomes.
inline constexpr unsigned MAX_OUT_EVENTS = 140;

// False for a channel message (status and two data bytes) that must be dropped before the filter:
// a data byte above 127 where the engine takes 0..127, or a controller number above 205.
bool is_playable_message(const uint8_t* msg);

// Turns the playable message `msg` (status and two data bytes) at the absolute sample time `time`
// into events.  Writes them to `out` and returns their number.
//
// A note on with velocity 0 becomes a note off; a pitch bend its two controllers, coarse first;
// controller 123 (all notes off) 128 note offs; a global controller moves to channel 0; values that
// pick one of a list are clamped to it.  Pressure, system messages and the controllers that the
// pitch bend uses itself (96, 97) become nothing.
unsigned filter_event(uint32_t time, const uint8_t* msg, midi_event (&out)[MAX_OUT_EVENTS]);

} // namespace tarquil
