// A stereo-linked compressor, one band of the master compressor.

#include "softsynth/stereo_compressor.h"

void StereoCompressor::reset() {
    peak = level = COMPRESSOR_START_LEVEL;
    attenuation = 0.0F;
}

void StereoCompressor::process(StereoBuffer& buf, float threshold, float ratio,
                               float attack_seconds, float release_seconds, float makeup_gain) {
    const float attack_factor = compressor_attack_factor(attack_seconds);
    const float release_factor = compressor_release_factor(release_seconds);
    const float inv_ratio_minus_one = compressor_inv_ratio_minus_one(ratio);
    const float inv_threshold = 1.0F / threshold;

    float p = peak;
    float e = level;
    float* frame = buf.get_first_left_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++, frame += 2) {
        p = std::max(p, std::max(std::fabs(frame[0]), std::fabs(frame[1])));
        e = compressor_next_level(e, p, attack_factor, release_factor);
        const float gain =
            compressor_knee(e, threshold, inv_threshold, inv_ratio_minus_one, makeup_gain);
        frame[0] *= gain;
        frame[1] *= gain;
        p = compressor_decayed_peak(p);
    }

    // An infinite sample would hold the gain at 0 for ever.
    if (!std::isfinite(p) || !std::isfinite(e)) {
        reset();
        return;
    }
    peak = p;
    level = e;
    attenuation = compressor_knee(e, threshold, inv_threshold, inv_ratio_minus_one, 1.0F);
}
