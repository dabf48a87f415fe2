// A stereo-linked compressor, one band of the master compressor.
//
// Gain curve, peak detector and level follower are those of compressor.h, with the louder side
// detected and both sides scaled alike.  The level moves before the gain is computed, so the gain
// responds in the same frame (the channel compressor's responds in the next).

#pragma once

#include "softsynth/effects/compressor.h"
#include "softsynth/kernels/level_detectors.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

class StereoCompressor {
  public:
    // Threshold and makeup gain linear, ratio at least 1, times in seconds (0 and up; an attack of
    // 0 is instant).
    struct Settings {
        float threshold;
        float ratio;
        float attack_seconds;
        float release_seconds;
        float makeup_gain;

        bool operator==(const Settings&) const = default;
    };

    void reset();

    // Scratch of `process`: the levels of the bands in turn, frame after frame.
    struct Levels {
        float samples[MAX_NUM_SAMPLES * LevelDetectors::SIGNALS] = {};
    };

    // In place: compressor i works on bufs[i], all of one size; `count` is 1 to 4.
    static void process(StereoCompressor* compressors, StereoBuffer* const* bufs,
                        const Settings* new_settings, unsigned count, Levels& levels);

    // True when peak and level have decayed as far as they do.
    [[nodiscard]] bool is_at_floor() const {
        return peak == COMPRESSOR_MIN_LEVEL && level == COMPRESSOR_MIN_LEVEL;
    }

    // The gain of the last frame without makeup, linear.
    [[nodiscard]] float get_level() const { return level; }
    // 0 before there was one.
    [[nodiscard]] float get_attenuation() const {
        return has_started ? gain_at(level, 1.0F) : 0.0F;
    }

  private:
    void take(const Settings& new_settings);
    void apply(StereoBuffer& buf, const float* own_levels);
    [[nodiscard]] float gain_at(float at_level, float makeup_gain) const {
        return compressor_knee(at_level, settings.threshold, inv_threshold, inv_ratio_minus_one,
                               makeup_gain);
    }

    // settings, and what follows from them
    Settings settings = {};
    bool has_settings = false;
    float attack_factor = 0.0F;
    float release_factor = 0.0F;
    float inv_threshold = 0.0F;
    float inv_ratio_minus_one = 0.0F;

    // memory
    float peak = COMPRESSOR_START_LEVEL;
    float level = COMPRESSOR_START_LEVEL;
    bool has_started = false; // since the last reset
};

} // namespace tarquil
