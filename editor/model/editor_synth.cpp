// What the editor needs of the synthesizer that it edits.

#include "editor/model/editor_synth.h"

namespace tarquil {

void read_bank(const TarqSettings& bank, unsigned program, EditorState& state) {
    const Instrument& instrument = bank.get_instrument(program);
    for (const ControllerInfo& info : channel_controller_rows())
        state.bytes[info.number] = instrument.get_bytes()[info.number];
    for (const ControllerInfo& info : global_controller_rows())
        state.bytes[info.number] = uint8_t(bank.get_global_controller(info.number));
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        state.names[i] = bank.get_instrument(i).get_name();
    state.program = program;
    state.song_title = bank.get_song_title();
    state.song_author = bank.get_song_author();
    state.dialect = bank.get_midi_dialect();
    state.tempo_sync = bank.get_tempo_sync();
    state.learned = bank.get_learned();
}

} // namespace tarquil
