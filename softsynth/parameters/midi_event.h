// The engine's input record.

#pragma once

#include <cstdint>

namespace tarquil {

// One time-stamped message in the engine's own vocabulary.  Controller numbers (`data1` of a
// message 0xB0) are ControllerNumber values, 0..205.
struct midi_event {
    uint32_t time = 0;  // absolute sample time
    uint8_t status = 0; // high nibble the kind, low nibble the channel
    uint8_t data1 = 0;  // note, controller or program number
    uint8_t data2 = 0;  // velocity or controller value
};

} // namespace tarquil
