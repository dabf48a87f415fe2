// How far up a recording is voiced.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tarquil {

// The voicing of each frame (see SpeechFrame): 0 where `pitches` (Hz) has 0, else where bands that
// repeat with the pitch give way to bands that do not.  Source: A. V. McCree and T. P. Barnwell, "A
// mixed excitation LPC vocoder model for low bit rate speech coding", IEEE Trans. Speech and Audio
// Processing 3 (1995) 242-250; one limit instead of a decision for each band.
std::vector<uint8_t> find_voicing(std::span<const float> samples, std::span<const double> pitches);

} // namespace tarquil
