// One channel of an engine as the dialect sees it.

#include "midi/gm/engine_channel.h"

#include "midi/gm/gm_channel.h"

namespace tarquil {

void EngineChannel::place(unsigned engine_index, unsigned channel_index) {
    engine = engine_index;
    channel = channel_index;
}

void EngineChannel::forget() {
    is_known = false;
    volume.stop();
    panning.stop();
}

void EngineChannel::set_sound(uint32_t time, const ControllerBytes& bytes, EngineEvents& out) {
    const bool everything = !is_known;
    is_known = true;
    if (everything) {
        sent[CTRL_PITCH_BEND_MSB] = sent[CTRL_PITCH_BEND_LSB] = UINT8_MAX;
        bend(time, BEND_CENTRE, out);
    }
    for (const ControllerInfo& info : channel_controller_rows()) {
        if (is_bend_controller(info.number))
            continue;
        if (everything)
            sent[info.number] = UINT8_MAX;
        set(time, info.number, bytes[info.number], out);
    }
}

void EngineChannel::set(uint32_t time, unsigned controller, uint8_t value, EngineEvents& out) {
    if (controller == CTRL_MAIN_VOLUME || controller == CTRL_PANNING)
        glide_of(controller).stop();
    if (sent[controller] == value)
        return;
    sent[controller] = value;
    put(time, MIDI_CONTROL_CHANGE, controller, value, out);
}

void EngineChannel::glide(uint32_t time, unsigned controller, uint8_t value, EngineEvents& out) {
    Glide& slope = glide_of(controller);
    if (slope.is_active() && slope.target() == value)
        return;
    // A single byte is the smallest step there is.
    if (value + 1 >= sent[controller] && value <= sent[controller] + 1)
        set(time, controller, value, out);
    else
        slope.start(time, sent[controller], value);
}

void EngineChannel::bend(uint32_t time, unsigned value, EngineEvents& out) {
    const auto coarse = uint8_t(value >> 7U);
    const auto fine = uint8_t(value & 0x7FU);
    if (sent[CTRL_PITCH_BEND_MSB] == coarse && sent[CTRL_PITCH_BEND_LSB] == fine)
        return;
    // The engine reads both as one: they always come together.
    sent[CTRL_PITCH_BEND_MSB] = coarse;
    sent[CTRL_PITCH_BEND_LSB] = fine;
    put(time, MIDI_CONTROL_CHANGE, CTRL_PITCH_BEND_MSB, coarse, out);
    put(time, MIDI_CONTROL_CHANGE, CTRL_PITCH_BEND_LSB, fine, out);
}

void EngineChannel::note_on(uint32_t time, unsigned note, unsigned velocity,
                            EngineEvents& out) const {
    put(time, MIDI_NOTE_ON, note, velocity, out);
}

void EngineChannel::note_off(uint32_t time, unsigned note, EngineEvents& out) const {
    put(time, MIDI_NOTE_OFF, note, 0, out);
}

void EngineChannel::silence(uint32_t time, EngineEvents& out) const {
    put(time, MIDI_SILENCE, 0, 0, out);
}

void EngineChannel::run_due(uint32_t time, EngineEvents& out) {
    for (const unsigned controller : {CTRL_MAIN_VOLUME, CTRL_PANNING}) {
        Glide& slope = glide_of(controller);
        if (slope.due() != DueTime(time))
            continue;
        sent[controller] = slope.take_step();
        put(time, MIDI_CONTROL_CHANGE, controller, sent[controller], out);
    }
}

void EngineChannel::move_clock_back(uint32_t frames) {
    volume.move_clock_back(frames);
    panning.move_clock_back(frames);
}

Glide& EngineChannel::glide_of(unsigned controller) {
    return controller == CTRL_MAIN_VOLUME ? volume : panning;
}

void EngineChannel::put(uint32_t time, unsigned kind, unsigned data1, unsigned data2,
                        EngineEvents& out) const {
    out.put(engine, {.time = time,
                     .status = midi_status(kind, channel),
                     .data1 = uint8_t(data1),
                     .data2 = uint8_t(data2)});
}

} // namespace tarquil
