// A sound that is given to a channel by itself.

#include "editor/model/editor_model.h"
#include "instrument/names.h"

namespace tarquil {

namespace {

bool is_same_sound(const Instrument& one, const Instrument& other) {
    return one.get_name() == other.get_name() && one.get_bytes() == other.get_bytes();
}

} // namespace

// The channel's own program; one that others play as well stays theirs, and the channel gets a slot
// that nobody has filled, else the last one that no channel plays.
unsigned EditorModel::program_for(unsigned channel) const {
    std::array<unsigned, MAX_INSTRUMENTS> players{};
    for (unsigned i = 0; i < unsigned(NUM_CHANNELS); i++)
        players[state.channel_programs[i]] += is_drum_channel(i) ? 0 : 1;
    const unsigned own = state.channel_programs[channel];
    if (players[own] <= 1)
        return own;
    unsigned last = own;
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        if (players[program] > 0)
            continue;
        if (state.names[program] == default_instrument_name(program))
            return program;
        last = program;
    }
    return last;
}

std::string EditorModel::give_to_channel(const Instrument& instrument, unsigned channel) {
    if (is_drum_channel(channel))
        return "The drum channel plays kits, which are no programs";
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        if (state.names[program] == instrument.get_name() &&
            is_same_sound(synth.get_instrument(program), instrument)) {
            assign_channel(channel, program);
            return "";
        }
    }
    const unsigned program = program_for(channel);
    UndoStep step{"Channel " + std::to_string(channel + 1), {}};
    step.edits.emplace_back(InstrumentEdit{program, synth.get_instrument(program), instrument});
    step.edits.emplace_back(ChannelEdit{channel, state.channel_programs[channel], program});
    change(std::move(step));
    return "";
}

} // namespace tarquil
