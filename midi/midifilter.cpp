// Translation of raw MIDI messages into the engine's vocabulary.

#include "midi/midifilter.h"

#include "common/assertion.h"
#include "common/log/log.h"
#include "softsynth/voices/controller.h"

namespace tarquil {

namespace {

constexpr unsigned NOTE_OFF = 0x80;
constexpr unsigned NOTE_ON = 0x90;
constexpr unsigned POLYPHONIC_PRESSURE = 0xA0;
constexpr unsigned CONTROL_CHANGE = 0xB0;
constexpr unsigned PROGRAM_CHANGE = 0xC0;
constexpr unsigned PITCH_BEND = 0xE0;

constexpr uint8_t ALL_NOTES_OFF = 123;
constexpr unsigned NUM_NOTES = 128;
constexpr uint8_t ALL_NOTES_OFF_VELOCITY = 100;

midi_event out_events[MAX_OUT_EVENTS];
unsigned n_out_events = 0;

void put(uint32_t time, unsigned status, unsigned data1, unsigned data2) {
    TARQ_ASSERT(n_out_events < MAX_OUT_EVENTS);
    out_events[n_out_events++] = {
        .time = time, .status = uint8_t(status), .data1 = uint8_t(data1), .data2 = uint8_t(data2)};
}

void filter_control_change(uint32_t time, unsigned channel, uint8_t number, uint8_t value) {
    if (number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB)
        return;
    if (number == ALL_NOTES_OFF) {
        for (unsigned note = 0; note < NUM_NOTES; note++)
            put(time, NOTE_OFF | channel, note, ALL_NOTES_OFF_VELOCITY);
        return;
    }
    const unsigned target = Controller::is_global(number) ? 0 : channel;
    put(time, CONTROL_CHANGE | target, number, unsigned(filter_controller(number, value)));
}

} // namespace

bool is_playable_message(const uint8_t* msg) {
    switch (msg[0] & 0xF0U) {
    case NOTE_OFF:
    case NOTE_ON:
    case PITCH_BEND:
        return msg[1] < 0x80 && msg[2] < 0x80;
    case CONTROL_CHANGE:
        return msg[1] < NUM_CONTROLLERS && msg[2] < 0x80;
    case PROGRAM_CHANGE:
        return msg[1] < 0x80;
    default:
        return true;
    }
}

unsigned filter_event(uint32_t time, const uint8_t* msg, const midi_event** out) {
    const uint8_t status = msg[0];
    const unsigned channel = status & 0x0FU;
    n_out_events = 0;
    switch (status & 0xF0U) {
    case NOTE_ON:
        put(time, (msg[2] == 0 ? NOTE_OFF : NOTE_ON) | channel, msg[1], msg[2]);
        break;
    case NOTE_OFF:
    case PROGRAM_CHANGE:
        put(time, status, msg[1], msg[2]);
        break;
    case POLYPHONIC_PRESSURE:
        break;
    case CONTROL_CHANGE:
        filter_control_change(time, channel, msg[1], msg[2]);
        break;
    case PITCH_BEND:
        put(time, CONTROL_CHANGE | channel, CTRL_PITCH_BEND_MSB, msg[2]);
        put(time, CONTROL_CHANGE | channel, CTRL_PITCH_BEND_LSB, msg[1]);
        break;
    default:
        logPrintf("midifilter: Unknown midi message %02x, ignoring\n", unsigned(status));
        break;
    }
    TARQ_ASSERT(n_out_events <= MAX_OUT_EVENTS);
    *out = out_events;
    return n_out_events;
}

} // namespace tarquil
