// The pitch bend's frequency factors.

#pragma once

namespace tarquil {

inline constexpr int PITCH_BEND_STEPS = 16384; // of a 14-bit bend

// Entry k is 2^((k - 8192) / 8192): one octave either way.
extern float pitch_bend_mulfac_table[PITCH_BEND_STEPS];

// Fills the table, once in a process; must run before any rendering.
void generate_pitch_bend_table();

} // namespace tarquil
