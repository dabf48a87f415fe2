// What is played by hand in the window.

#include "editor/model/hands.h"

namespace tarquil {

Hands::Hands(EditorModel& edited, bool with_computer_keys)
    : model(edited), notes(edited.get_synth()), computer(notes), with_computer(with_computer_keys) {
}

Hands::~Hands() {
    let_bend_go();
    for (unsigned channel = 0; sustained_channels >> channel != 0; channel++) {
        if ((sustained_channels >> channel & 1U) != 0)
            model.get_synth().set_sustain(channel, false);
    }
}

unsigned Hands::channel() const {
    return model.channel();
}

bool Hands::has_modulation_and_sustain() const {
    return model.get_state().dialect == MidiDialect::GENERAL_MIDI;
}

void Hands::strike(unsigned key, unsigned velocity) {
    notes.strike(PlayedNotes::POINTER, channel(), key, velocity);
}

void Hands::bend(unsigned value) {
    if (!bent_channel)
        bent_channel = channel();
    model.get_synth().bend(*bent_channel, value);
}

void Hands::let_bend_go() {
    if (bent_channel)
        model.get_synth().bend(*bent_channel, EditorKeys::BEND_CENTRE);
    bent_channel.reset();
}

void Hands::set_modulation(unsigned value) {
    model.get_synth().set_modulation(channel(), value);
}

void Hands::set_sustain(bool is_down) {
    const unsigned bit = 1U << channel();
    sustained_channels = is_down ? sustained_channels | bit : sustained_channels & ~bit;
    model.get_synth().set_sustain(channel(), is_down);
}

void Hands::set_plays_computer_keys(bool plays) {
    with_computer = plays;
    if (!plays)
        computer.release_all();
}

bool Hands::update() {
    const EditorKeys now = model.get_synth().read_keys();
    const bool is_new = now != keys;
    keys = now;
    return is_new;
}

} // namespace tarquil
