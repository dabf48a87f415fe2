// The master bus's four-band compressor.

#include "softsynth/multi_compressor.h"

#include "common/assertion.h"

namespace {

constexpr int SPLIT_STAGES = 4;
constexpr float SPLIT_RESONANCE = 0.25F;

} // namespace

void MultiCompressor::reset() {
    for (StereoCompressor& compressor : compressors)
        compressor.reset();
    for (SplittingStereoFilter& split : splits)
        split.init(SPLIT_STAGES);
}

void MultiCompressor::process(StereoBuffer& buf, const float* crossover_hz, const float* threshold,
                              const float* ratio, const float* attack_seconds,
                              const float* release_seconds, const float* makeup_gain) {
    static StereoBuffer low[MC_N_BANDS - 1];
    StereoBuffer* bands[MC_N_BANDS];
    StereoCompressor::Settings settings[MC_N_BANDS];
    const uint32_t frames = buf.get_buf_size();
    for (unsigned b = 0; b < MC_N_BANDS; b++) {
        settings[b] = {threshold[b], ratio[b], attack_seconds[b], release_seconds[b],
                       makeup_gain[b]};
        bands[b] = b == MC_N_BANDS - 1 ? &buf : &low[b];
    }
    for (unsigned b = 0; b < MC_N_BANDS - 1; b++) {
        low[b].init(frames);
        Buffer::copy(buf, low[b]);
        splits[b].render(low[b].get_first_left_sample_ptr(), buf.get_first_left_sample_ptr(),
                         frames, crossover_hz[b] * RADIANS_PER_HZ, SPLIT_RESONANCE);
    }
    StereoCompressor::process(compressors, bands, settings, MC_N_BANDS);

    const float* lows[MC_N_BANDS - 1];
    for (unsigned b = 0; b < MC_N_BANDS - 1; b++)
        lows[b] = low[b].get_first_left_sample_ptr();
    float* out = buf.get_first_left_sample_ptr();
    for (uint32_t i = 0; i < 2 * frames; i++) {
        float sum = 0.0F; // which turns -0 into 0
        for (const float* samples : lows)
            sum += samples[i];
        out[i] += sum;
    }
}

float MultiCompressor::get_level(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return compressors[band].get_level();
}

float MultiCompressor::get_attenuation(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return compressors[band].get_attenuation();
}
