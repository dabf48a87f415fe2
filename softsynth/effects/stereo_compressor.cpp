// A stereo-linked compressor, one band of the master compressor.

#include "softsynth/effects/stereo_compressor.h"

#include "softsynth/kernels/kernels.h"

namespace tarquil {

void StereoCompressor::reset() {
    peak = level = COMPRESSOR_START_LEVEL;
    has_started = false;
}

void StereoCompressor::take(const Settings& new_settings) {
    if (has_settings && settings == new_settings)
        return;
    settings = new_settings;
    has_settings = true;
    attack_factor = compressor_attack_factor(settings.attack_seconds);
    release_factor = compressor_release_factor(settings.release_seconds);
    inv_threshold = 1.0F / settings.threshold;
    inv_ratio_minus_one = compressor_inv_ratio_minus_one(settings.ratio);
}

void StereoCompressor::process(StereoCompressor* compressors, StereoBuffer* const* bufs,
                               const Settings* new_settings, unsigned count, Levels& levels) {
    LevelDetectors detectors;
    detectors.count = count;
    for (unsigned i = 0; i < count; i++) {
        compressors[i].take(new_settings[i]);
        detectors.frames[i] = bufs[i]->get_first_left_sample_ptr();
        detectors.attack_factor[i] = compressors[i].attack_factor;
        detectors.release_factor[i] = compressors[i].release_factor;
        detectors.peak[i] = compressors[i].peak;
        detectors.level[i] = compressors[i].level;
    }
    kernels().detect_levels(detectors, levels.samples, bufs[0]->get_buf_size());
    for (unsigned i = 0; i < count; i++) {
        compressors[i].peak = detectors.peak[i];
        compressors[i].level = detectors.level[i];
        compressors[i].apply(*bufs[i], levels.samples + i);
    }
}

void StereoCompressor::apply(StereoBuffer& buf, const float* own_levels) {
    const StereoCompressor constant = *this; // which no frame can be a part of
    float* frame = buf.get_first_left_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++, frame += 2) {
        const float gain = constant.gain_at(own_levels[LevelDetectors::SIGNALS * i],
                                            constant.settings.makeup_gain);
        frame[0] *= gain;
        frame[1] *= gain;
    }
    // An infinite sample would hold the gain at 0 for ever.
    if (std::isfinite(peak) && std::isfinite(level))
        has_started = true;
    else
        reset();
}

} // namespace tarquil
