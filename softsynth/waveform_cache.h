// The files that keep built wavetables between starts.
//
// "wt%d-%d.dat" (number of tables, waveform) in $XDG_CACHE_HOME/tarquil, else ~/.cache/tarquil: raw
// little-endian floats, table after table, no header.  A file that cannot be read is missing, one
// that cannot be written is skipped.

#pragma once

#include <vector>

#include "softsynth/waveform.h"

// Fills `block` (its size is the expected number of floats).  False when there is no file of that
// size, or a value in it is not finite or beyond +-2.
bool read_waveform_cache(unsigned count, OscType type, std::vector<float>& block);

void write_waveform_cache(unsigned count, OscType type, const std::vector<float>& block);

// Makes sure that a file of `num_floats` zeros exists.
void keep_empty_waveform_cache(unsigned count, OscType type, unsigned num_floats);
