// The song that the formats are compared with, as messages and as a MIDI file for the renderer.

#pragma once

#include "tests/formats/common/format_song.h"
#include "tests/midi/smf/smf_builder.h"

namespace tarquil {

// Two seconds and the sound behind them, in engine frames.
inline constexpr uint32_t TABLE_FRAMES = 110250;

// General MIDI on all channels: notes, drums, programs, bends and controllers, each at an engine
// frame of its own, since formats differ in what comes first within a frame.
std::vector<SongMessage> table_song();

// As a MIDI file whose ticks are engine frames.
SmfBytes midi_file(const std::vector<SongMessage>& song);

} // namespace tarquil
