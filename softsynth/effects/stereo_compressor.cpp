// A stereo-linked compressor, one band of the master compressor.

#include "softsynth/effects/stereo_compressor.h"

#include "softsynth/kernels/kernels.h"

namespace tarquil {

void StereoCompressor::reset() {
    peak = level = COMPRESSOR_START_LEVEL;
    attenuation = 0.0F;
}

void StereoCompressor::process(StereoCompressor* compressors, StereoBuffer* const* bufs,
                               const Settings* settings, unsigned count, Levels& levels) {
    LevelDetectors detectors;
    detectors.count = count;
    for (unsigned i = 0; i < count; i++) {
        detectors.frames[i] = bufs[i]->get_first_left_sample_ptr();
        detectors.attack_factor[i] = compressor_attack_factor(settings[i].attack_seconds);
        detectors.release_factor[i] = compressor_release_factor(settings[i].release_seconds);
        detectors.peak[i] = compressors[i].peak;
        detectors.level[i] = compressors[i].level;
    }
    kernels().detect_levels(detectors, levels.samples, bufs[0]->get_buf_size());
    for (unsigned i = 0; i < count; i++) {
        compressors[i].peak = detectors.peak[i];
        compressors[i].level = detectors.level[i];
        compressors[i].apply(*bufs[i], settings[i], levels.samples + i);
    }
}

void StereoCompressor::apply(StereoBuffer& buf, const Settings& settings, const float* own_levels) {
    const float inv_ratio_minus_one = compressor_inv_ratio_minus_one(settings.ratio);
    const float inv_threshold = 1.0F / settings.threshold;
    const auto gain_at = [&](float e, float makeup_gain) {
        return compressor_knee(e, settings.threshold, inv_threshold, inv_ratio_minus_one,
                               makeup_gain);
    };
    float* frame = buf.get_first_left_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++, frame += 2) {
        const float gain = gain_at(own_levels[LevelDetectors::SIGNALS * i], settings.makeup_gain);
        frame[0] *= gain;
        frame[1] *= gain;
    }
    // An infinite sample would hold the gain at 0 for ever.
    if (std::isfinite(peak) && std::isfinite(level))
        attenuation = gain_at(level, 1.0F);
    else
        reset();
}

} // namespace tarquil
