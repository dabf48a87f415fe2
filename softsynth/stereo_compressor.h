// A stereo-linked compressor, one band of the master compressor.
//
// Gain curve, peak detector and level follower are those of compressor.h, with the louder side
// detected and both sides scaled alike.  The level moves before the gain is computed, so the gain
// responds in the same frame (the channel compressor's responds in the next).

#pragma once

#include "softsynth/buffer.h"
#include "softsynth/compressor.h"

class StereoCompressor {
  public:
    void reset();

    // In place.  Threshold and makeup gain linear, ratio at least 1, times in seconds (0 and up; an
    // attack of 0 is instant).
    void process(StereoBuffer& buf, float threshold, float ratio, float attack_seconds,
                 float release_seconds, float makeup_gain);

    // The gain of the last frame without makeup, linear.
    [[nodiscard]] float get_attenuation() const { return attenuation; }

  private:
    // memory
    float peak = COMPRESSOR_START_LEVEL;
    float level = COMPRESSOR_START_LEVEL;
    float attenuation = 0.0F;
};
