// A bank's bytes as the engine's events.

#pragma once

#include <cstdint>

#include "instrument/controller_bytes.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil {

// Controller `number` (0..205) of `channel` (0..15) becomes `value` (0..127) at `time`.
midi_event controller_event(unsigned channel, unsigned number, int value, uint32_t time);

// Every controller of a channel, or every global one (on channel 0), in number order, into `out`,
// which has room for NUM_CONTROLLERS.  Returns how many.
unsigned program_events(const ControllerBytes& bytes, unsigned channel, uint32_t time,
                        midi_event* out);
unsigned global_events(const ControllerBytes& bytes, uint32_t time, midi_event* out);

} // namespace tarquil
