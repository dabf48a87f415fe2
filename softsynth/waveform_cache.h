// The files that keep built wavetables between starts.
//
// "wt%d-%d.dat" (number of tables, waveform) in $XDG_CACHE_HOME/tarquil, else ~/.cache/tarquil: raw
// little-endian floats, table after table, no header.  A file that cannot be read is missing, one
// that cannot be written is skipped.

#pragma once

#include <vector>

#include "softsynth/waveform.h"

// The floats of a cache file, mapped into memory; changes stay in this process.
class CachedTables {
  public:
    // Holds nothing when there is no file of `num_floats`, or when a value in it is not finite or
    // beyond +-2.
    CachedTables(unsigned count, OscType type, size_t num_floats);
    ~CachedTables();
    CachedTables(const CachedTables&) = delete;
    CachedTables& operator=(const CachedTables&) = delete;

    // Null when there is nothing.
    [[nodiscard]] float* get() const { return floats; }

  private:
    void unmap();

    float* floats = nullptr;
    size_t num_bytes;
};

void write_waveform_cache(unsigned count, OscType type, const std::vector<float>& block);

// Makes sure that a file of `num_floats` zeros exists.
void keep_empty_waveform_cache(unsigned count, OscType type, unsigned num_floats);
