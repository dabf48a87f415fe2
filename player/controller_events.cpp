// A bank's bytes as the engine's events.

#include "player/controller_events.h"

#include "softsynth/voices/controller.h"

namespace tarquil {

namespace {

unsigned emit(const ControllerBytes& bytes, bool global, unsigned channel, uint32_t time,
              midi_event* out) {
    unsigned count = 0;
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (is_global_controller(number) == global)
            out[count++] = controller_event(channel, number, bytes[number], time);
    }
    return count;
}

} // namespace

midi_event controller_event(unsigned channel, unsigned number, int value, uint32_t time) {
    return {.time = time,
            .status = midi_status(MIDI_CONTROL_CHANGE, channel),
            .data1 = uint8_t(number),
            .data2 = uint8_t(value)};
}

unsigned program_events(const ControllerBytes& bytes, unsigned channel, uint32_t time,
                        midi_event* out) {
    return emit(bytes, false, channel, time, out);
}

unsigned global_events(const ControllerBytes& bytes, uint32_t time, midi_event* out) {
    return emit(bytes, true, 0, time, out);
}

} // namespace tarquil
