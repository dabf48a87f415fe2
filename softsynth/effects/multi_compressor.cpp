// The master bus's four-band compressor.

#include "softsynth/effects/multi_compressor.h"

#include <algorithm>
#include <iterator>

#include "common/assertion.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr float SPLIT_RESONANCE = 0.25F;

} // namespace

void MultiCompressor::reset() {
    for (StereoCompressor& compressor : compressors)
        compressor.reset();
    for (SplittingStereoFilter& split : splits)
        split.clear_history();
    was_at_rest = silence_kept = false;
}

void MultiCompressor::process(StereoBuffer& buf, const float* crossover_hz, const float* threshold,
                              const float* ratio, const float* attack_seconds,
                              const float* release_seconds, const float* makeup_gain) {
    StereoBuffer* bands[MC_N_BANDS];
    StereoCompressor::Settings settings[MC_N_BANDS];
    const uint32_t frames = buf.get_buf_size();
    for (unsigned b = 0; b < MC_N_BANDS; b++) {
        settings[b] = {threshold[b], ratio[b], attack_seconds[b], release_seconds[b],
                       makeup_gain[b]};
        bands[b] = b == MC_N_BANDS - 1 ? &buf : &low[b];
    }
    // What silence left as it was, it leaves as it is again.
    const bool same_settings = keeps_settings(crossover_hz, settings);
    const bool silent = all_zero(buf.get_first_left_sample_ptr(), 2 * frames);
    if (silent && silence_kept && same_settings)
        return;
    float* lows[MC_N_BANDS - 1];
    for (unsigned b = 0; b < MC_N_BANDS - 1; b++) {
        low[b].init(frames);
        lows[b] = low[b].get_first_left_sample_ptr();
        splits[b].set(crossover_hz[b] * RADIANS_PER_HZ, SPLIT_RESONANCE);
    }
    float* out = buf.get_first_left_sample_ptr();
    SplittingStereoFilter::render(splits, lows, out, frames);
    StereoCompressor::process(compressors, bands, settings, MC_N_BANDS, levels);

    for (uint32_t i = 0; i < 2 * frames; i++) {
        float sum = 0.0F; // which turns -0 into 0
        for (const float* samples : lows)
            sum += samples[i];
        out[i] += sum;
    }
    const bool at_rest = silent && is_at_rest();
    silence_kept = at_rest && was_at_rest && same_settings && all_zero(out, 2 * frames);
    was_at_rest = at_rest;
}

bool MultiCompressor::keeps_settings(const float* crossover_hz,
                                     const StereoCompressor::Settings* settings) {
    const bool same = std::equal(crossover_hz, crossover_hz + MC_N_BANDS - 1, last_crossover_hz) &&
                      std::equal(settings, settings + MC_N_BANDS, last_settings);
    std::copy_n(crossover_hz, MC_N_BANDS - 1, last_crossover_hz);
    std::copy_n(settings, MC_N_BANDS, last_settings);
    return same;
}

bool MultiCompressor::is_at_rest() const {
    return std::all_of(std::begin(splits), std::end(splits),
                       [](const SplittingStereoFilter& split) { return split.is_empty(); }) &&
           std::all_of(std::begin(compressors), std::end(compressors),
                       [](const StereoCompressor& band) { return band.is_at_floor(); });
}

float MultiCompressor::get_level(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return compressors[band].get_level();
}

float MultiCompressor::get_attenuation(unsigned band) const {
    TARQ_ASSERT(band < MC_N_BANDS);
    return compressors[band].get_attenuation();
}

} // namespace tarquil
