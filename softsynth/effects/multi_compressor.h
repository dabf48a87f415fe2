// The master bus's four-band compressor.
//
// Own design.  Three crossovers in cascade, each on what the one before left above its frequency;
// every band passes a stereo-linked compressor, and the bands are summed.

#pragma once

#include "softsynth/effects/stereo_compressor.h"
#include "softsynth/filters/splitting_stereo_filter.h"
#include "softsynth/parameters/families.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

inline constexpr unsigned MC_N_BANDS = NUM_COMPRESSOR_BANDS;

class MultiCompressor {
  public:
    MultiCompressor() { reset(); }

    // Clears the envelopes and the crossovers' history.
    void reset();

    // In place.  `crossover_hz` has MC_N_BANDS - 1 entries, rising; the others MC_N_BANDS, lowest
    // band first: threshold and makeup gain linear, ratio at least 1, times in seconds.
    void process(StereoBuffer& buf, const float* crossover_hz, const float* threshold,
                 const float* ratio, const float* attack_seconds, const float* release_seconds,
                 const float* makeup_gain);

    // The level of a band's follower at its last frame, and its gain there without makeup, linear.
    [[nodiscard]] float get_level(unsigned band) const;
    [[nodiscard]] float get_attenuation(unsigned band) const;

  private:
    // Stores the settings; true when they are those of the block before.
    bool keeps_settings(const float* crossover_hz, const StereoCompressor::Settings* settings);
    // No history and every level at its floor.
    [[nodiscard]] bool is_at_rest() const;

    // memory
    SplittingStereoFilter splits[MC_N_BANDS - 1];
    StereoCompressor compressors[MC_N_BANDS];

    // of the last block
    float last_crossover_hz[MC_N_BANDS - 1] = {};
    StereoCompressor::Settings last_settings[MC_N_BANDS] = {};
    bool was_at_rest = false;  // after it
    bool silence_kept = false; // it was at rest before and after, and silent on both sides

    // scratch
    StereoBuffer low[MC_N_BANDS - 1];
    StereoCompressor::Levels levels;
};

} // namespace tarquil
