// The engine's input record.

#pragma once

#include <cstdint>

namespace tarquil {

// One time-stamped message in the engine's own vocabulary.  Controller numbers (`data1` of a
// control change) are ControllerNumber values, 0..205.
struct midi_event {
    uint32_t time = 0;  // absolute sample time
    uint8_t status = 0; // high nibble the kind, low nibble the channel
    uint8_t data1 = 0;  // note, controller or program number
    uint8_t data2 = 0;  // velocity or controller value
};

// The kinds that the engine takes; what else MIDI knows is in midi/midi_message.h.
inline constexpr unsigned MIDI_NOTE_OFF = 0x80;
inline constexpr unsigned MIDI_NOTE_ON = 0x90;
inline constexpr unsigned MIDI_CONTROL_CHANGE = 0xB0;
inline constexpr unsigned MIDI_PROGRAM_CHANGE = 0xC0;

// The engine's own, in the place of a message that it does not take: fades out all that sounds on
// the channel, with the echoes of its effects, and leaves what comes later alone.
// SILENCE_MASTER as `data1` also ends the echoes of the master section.
inline constexpr unsigned MIDI_SILENCE = 0xA0;
inline constexpr uint8_t SILENCE_MASTER = 1;
inline constexpr uint32_t SILENCE_FADE_SAMPLES = 192; // that it takes: 4.35 ms

constexpr unsigned midi_kind(uint8_t status) {
    return status & 0xF0U;
}
constexpr unsigned midi_channel(uint8_t status) {
    return status & 0x0FU;
}
constexpr uint8_t midi_status(unsigned kind, unsigned channel) {
    return uint8_t(kind | channel);
}

} // namespace tarquil
