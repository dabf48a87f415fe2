// A whole song through the engine, for the golden comparison.

#pragma once

#include <string>
#include <vector>

namespace tarquil {

// Plays a MIDI file with a bank as the render command does, and two seconds more; interleaved
// stereo. Empty, with a message, when one of them does not load.
std::vector<float> play_song(const std::string& song_path, const std::string& bank_path);

} // namespace tarquil
