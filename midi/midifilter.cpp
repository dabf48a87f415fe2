// Translation of raw MIDI messages into the engine's vocabulary.

#include "midi/midifilter.h"

#include "common/assertion.h"
#include "common/log/log.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_NOTES = 128;
constexpr uint8_t ALL_NOTES_OFF_VELOCITY = 100;

// The events of one message.
struct Output {
    void put(unsigned kind, unsigned channel, unsigned data1, unsigned data2) {
        TARQ_ASSERT(n_out_events < MAX_OUT_EVENTS);
        out[n_out_events++] = {.time = time,
                               .status = midi_status(kind, channel),
                               .data1 = uint8_t(data1),
                               .data2 = uint8_t(data2)};
    }

    midi_event (&out)[MAX_OUT_EVENTS];
    uint32_t time = 0;
    unsigned n_out_events = 0;
};

void filter_control_change(Output& output, unsigned channel, uint8_t number, uint8_t value) {
    if (number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB)
        return;
    if (number == MIDI_ALL_NOTES_OFF) {
        for (unsigned note = 0; note < NUM_NOTES; note++)
            output.put(MIDI_NOTE_OFF, channel, note, ALL_NOTES_OFF_VELOCITY);
        return;
    }
    output.put(MIDI_CONTROL_CHANGE, is_global_controller(number) ? 0 : channel, number,
               unsigned(filter_controller(number, value)));
}

} // namespace

bool is_playable_message(const uint8_t* msg) {
    switch (midi_kind(msg[0])) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
    case MIDI_PITCH_BEND:
        return !is_midi_status(msg[1]) && !is_midi_status(msg[2]);
    case MIDI_CONTROL_CHANGE:
        return msg[1] < NUM_CONTROLLERS && !is_midi_status(msg[2]);
    case MIDI_PROGRAM_CHANGE:
        return !is_midi_status(msg[1]);
    default:
        return true;
    }
}

unsigned filter_event(uint32_t time, const uint8_t* msg, midi_event (&out)[MAX_OUT_EVENTS]) {
    const unsigned channel = midi_channel(msg[0]);
    Output output{out, time};
    switch (midi_kind(msg[0])) {
    case MIDI_NOTE_ON:
        output.put(msg[2] == 0 ? MIDI_NOTE_OFF : MIDI_NOTE_ON, channel, msg[1], msg[2]);
        break;
    case MIDI_NOTE_OFF:
    case MIDI_PROGRAM_CHANGE:
        output.put(midi_kind(msg[0]), channel, msg[1], msg[2]);
        break;
    case MIDI_POLYPHONIC_PRESSURE:
        break;
    case MIDI_CONTROL_CHANGE:
        filter_control_change(output, channel, msg[1], msg[2]);
        break;
    case MIDI_PITCH_BEND:
        output.put(MIDI_CONTROL_CHANGE, channel, CTRL_PITCH_BEND_MSB, msg[2]);
        output.put(MIDI_CONTROL_CHANGE, channel, CTRL_PITCH_BEND_LSB, msg[1]);
        break;
    default:
        logPrintf("midifilter: Unknown midi message %02x, ignoring\n", unsigned(msg[0]));
        break;
    }
    return output.n_out_events;
}

} // namespace tarquil
