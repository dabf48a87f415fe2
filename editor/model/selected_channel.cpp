// The editor's selected channel: what is edited is what is heard.

#include "editor/model/editor_model.h"

#include "softsynth/parameters/rhythm_channel.h"

namespace tarquil {

bool EditorModel::is_drum_channel(unsigned channel) const {
    return state.dialect == MidiDialect::GENERAL_MIDI && channel == RHYTHM_CHANNEL;
}

bool EditorModel::plays_edited(unsigned channel) const {
    return !is_drum_channel(channel) && state.channel_programs[channel] == state.program;
}

void EditorModel::keep_channel(unsigned channel) {
    selected_channel = state.selected_channel = channel;
    synth.set_selected_channel(channel);
}

void EditorModel::select_channel(unsigned channel) {
    if (is_drum_channel(channel))
        return;
    keep_channel(channel);
    select_program(state.channel_programs[channel]);
}

void EditorModel::choose_program(unsigned program) {
    assign_channel(selected_channel, program);
}

// After a change of the user's: the selected channel may have got another program by it.
void EditorModel::follow_channel(bool was_heard) {
    if (was_heard)
        select_channel(selected_channel);
}

// What is edited may have changed.
void EditorModel::find_channel() {
    if (is_heard())
        return;
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (plays_edited(channel)) {
            keep_channel(channel);
            return;
        }
    }
    if (is_drum_channel(selected_channel))
        keep_channel(0);
}

} // namespace tarquil
