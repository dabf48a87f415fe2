// What the user is told when a channel has got a sound.

#include "editor/widgets/given_sound.h"

namespace tarquil {

void tell_given_sound(UiHost& host, unsigned channel) {
    const EditorState& state = host.get_model().get_state();
    const unsigned program = state.channel_programs[channel];
    host.show_message("Channel " + std::to_string(channel + 1) + " plays " + state.names[program] +
                          ", program " + std::to_string(program),
                      MessageKind::DONE);
}

} // namespace tarquil
