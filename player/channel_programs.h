// The lines of a saved state that say which program each channel plays and which one is edited.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/midi_dialect.h"

namespace tarquil {

// Program 0..127 of each channel.
using ChannelPrograms = std::array<uint8_t, NUM_CHANNELS>;

// Channel c plays program c; in General MIDI all play program 0.
ChannelPrograms usual_channel_programs(MidiDialect dialect);

// "channel_programs = 0 1 2 ...", which a bank's reader passes over, and a line break.
std::string channel_programs_line(const ChannelPrograms& programs);

// The programs of the last such line of a state's text; channels that it does not name well play
// the usual ones.
ChannelPrograms find_channel_programs(std::string_view text, MidiDialect dialect);

// "edited_program = 5", which a bank's reader passes over as well, and a line break; and what such
// a line of a state's text says, if it has one that is not damaged.
std::string edited_program_line(unsigned program);
std::optional<unsigned> find_edited_program(std::string_view text);

// The lowest channel that plays a program, else 0: the one that a window selects by itself.
unsigned usual_selected_channel(const ChannelPrograms& programs, unsigned edited_program);
// The same for the channel that is selected in a window; no line for the usual one.
std::string selected_channel_line(unsigned channel, const ChannelPrograms& programs,
                                  unsigned edited_program);
std::optional<unsigned> find_selected_channel(std::string_view text);

} // namespace tarquil
