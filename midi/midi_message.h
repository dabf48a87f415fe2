// The words of MIDI that the engine's own events do not have.

#pragma once

#include <cstdint>

#include "softsynth/parameters/midi_event.h"

namespace tarquil {

inline constexpr unsigned MIDI_POLYPHONIC_PRESSURE = 0xA0;
inline constexpr unsigned MIDI_CHANNEL_PRESSURE = 0xD0;
inline constexpr unsigned MIDI_PITCH_BEND = 0xE0;
inline constexpr unsigned MIDI_SYSTEM = 0xF0;

// Controller numbers that are messages to the channel.
inline constexpr uint8_t MIDI_ALL_NOTES_OFF = 123;

// A status has the top bit, a data byte has not.
constexpr bool is_midi_status(uint8_t byte) {
    return (byte & 0x80U) != 0;
}

// How many data bytes follow the status of a channel message.
constexpr unsigned num_midi_data_bytes(uint8_t status) {
    const unsigned kind = midi_kind(status);
    return kind == MIDI_PROGRAM_CHANGE || kind == MIDI_CHANNEL_PRESSURE ? 1 : 2;
}

} // namespace tarquil
