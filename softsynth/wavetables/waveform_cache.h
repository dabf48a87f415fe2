// The files that keep built wavetables between starts.
//
// "wt%d-%d.dat" (number of tables, waveform) in the cache's folder: raw little-endian floats, table
// after table, no header.  A file that cannot be read is missing, one that cannot be written is
// skipped; so is every file of a cache without a folder.

#pragma once

#include <cstddef>
#include <string>

#include "softsynth/wavetables/waveform.h"

namespace tarquil {

// Where the tables of a file lie in memory: the k-th from k * `stride` on, `size` samples each.
struct CachedTables {
    float* samples;
    size_t size;
    size_t stride;
    unsigned count;
};

// False when there is no file of that size, or when a value in it is not finite or beyond +-2; the
// samples are of no meaning then.
bool read_waveform_cache(const std::string& folder, OscType type, const CachedTables& tables);

void write_waveform_cache(const std::string& folder, OscType type, const CachedTables& tables);

// Makes sure that a file of `num_floats` zeros exists.
void keep_empty_waveform_cache(const std::string& folder, unsigned count, OscType type,
                               unsigned num_floats);

} // namespace tarquil
