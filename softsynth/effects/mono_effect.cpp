// An insert effect of a channel: distortion, compressor, bit and rate reducer, filter or exciter.

#include "softsynth/effects/mono_effect.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/assertion.h"
#include "softsynth/effects/distortion.h"
#include "softsynth/parameters/mono_effect_quantities.h"

namespace tarquil {

namespace {

constexpr float LOFI_SCALE = 16777216.0F; // 2^24
constexpr float LOFI_STEP = 1.0F / LOFI_SCALE;

// A 32-bit integer conversion that has, for values out of range and NaN, the result of the x86
// instruction on every machine.
int32_t truncate_to_int32(float x) {
    constexpr float LIMIT = 2147483648.0F;
    return x >= -LIMIT && x < LIMIT ? int32_t(x) : std::numeric_limits<int32_t>::min();
}

} // namespace

void MonoEffect::reset_compressor() {
    peak = level = COMPRESSOR_START_LEVEL;
    gain = 0.0F;
}

void MonoEffect::render(effect_type new_type, MonoBuffer& buf, int param1, int param2, int param3,
                        int param4, int param5, const MonoBuffer& cutoff,
                        const MonoBuffer& resonance) {
    TARQ_ASSERT(param1 >= 0 && param1 <= 127);
    TARQ_ASSERT(param2 >= 0 && param2 <= 127);
    TARQ_ASSERT(param3 >= 0 && param3 <= 127);
    TARQ_ASSERT(param4 >= 0 && param4 <= 127);
    TARQ_ASSERT(param5 >= 0 && param5 <= 127);
    if (type != new_type) {
        reset_compressor();
        filter.init(FILTER_NONE, 0, 0, 0.0F);
        last_filter_type = 0;
        type = new_type;
    }

    switch (type) {
    case MONO_EFFECT_OFF:
        return;
    case MONO_EFFECT_DISTORTION:
        render_distortion(buf, param1, param2, param3, param4);
        return;
    case MONO_EFFECT_COMPRESSOR:
        render_compression(buf, param1, param2, param3, param4, param5);
        return;
    case MONO_EFFECT_LOFI:
        render_lofi(buf, param1, param2);
        return;
    case MONO_EFFECT_FILTER:
        render_filter(buf, param3, param4, cutoff, resonance);
        return;
    case MONO_EFFECT_EXCITER:
        render_exciter(buf, param1);
        return;
    default:
        TARQ_ASSERT(0);
    }
}

void MonoEffect::render_distortion(MonoBuffer& buf, int p1, int p2, int p3, int p4) {
    const float threshold = distortion_threshold(p1);
    const float drive = distortion_drive(p2);
    const float post_gain = distortion_post_gain(p3);
    const float asymmetry = distortion_asymmetry(p4);
    float slope = 0.0F;
    float dc_offset = 0.0F;
    float knee_a = 0.0F;
    float knee_b = 0.0F;
    distortion_calc_param(threshold, drive, asymmetry, &slope, &dc_offset, &knee_a, &knee_b);
    float* samples = buf.get_first_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++) {
        samples[i] =
            distortion(samples[i], threshold, asymmetry, slope, dc_offset, knee_a, knee_b) *
            post_gain;
    }
}

void MonoEffect::render_compression(MonoBuffer& buf, int p1, int p2, int p3, int p4, int p5) {
    const float threshold = mono_effect_threshold(p1);
    const float ratio = mono_compressor_ratio(p2);
    const float attack_factor = compressor_attack_factor(mono_compressor_attack(p3));
    const float release_factor = compressor_release_factor(mono_compressor_release(p4));
    const float makeup_gain = mono_compressor_makeup(p5);
    const float inv_ratio_minus_one = compressor_inv_ratio_minus_one(ratio);
    const float inv_threshold = 1.0F / threshold;

    float p = peak;
    float e = level;
    float g = gain;
    float* samples = buf.get_first_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++) {
        g = compressor_knee(e, threshold, inv_threshold, inv_ratio_minus_one, makeup_gain);
        p = std::max(p, std::fabs(samples[i]));
        samples[i] *= g;
        e = compressor_next_level(e, p, attack_factor, release_factor);
        p = compressor_decayed_peak(p);
    }
    peak = p;
    level = e;
    gain = g;
    // An infinite sample would hold the gain at 0 for ever.
    if (!std::isfinite(peak) || !std::isfinite(level))
        reset_compressor();
}

void MonoEffect::render_lofi(MonoBuffer& buf, int p1, int p2) {
    const int bits_off = lofi_bits_off(p1);
    const auto kept_bits = int32_t(~0U << unsigned(bits_off));
    const int period = lofi_period(p2);
    int remaining = 0; // a block always starts with a new sample
    float held = 0.0F;
    float* samples = buf.get_first_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++) {
        if (remaining == 0) {
            held = float(truncate_to_int32(samples[i] * LOFI_SCALE) & kept_bits) * LOFI_STEP;
            remaining = period;
        }
        remaining--;
        samples[i] = held;
    }
}

void MonoEffect::render_filter(MonoBuffer& buf, int p3, int p4, const MonoBuffer& cutoff,
                               const MonoBuffer& resonance) {
    const uint32_t size = buf.get_buf_size();
    const auto filter_type = mono_filter_type(p3);
    const int depth = mono_filter_depth(p4);
    const bool is_new_type = int(filter_type) != last_filter_type;
    if (is_ladder_filter(filter_type)) {
        if (is_new_type)
            ladder_filter.init(filter_type, 0.0F);
        ladder_filter.render(buf.get_first_sample_ptr(), size, cutoff.get_first_sample_ptr(),
                             resonance.get_first_sample_ptr());
    } else {
        // A count without a type stays 0 in the filter, so that case starts anew in every block;
        // there is no state to lose.
        if (is_new_type || depth != filter.get_depth())
            filter.init(get_base_filter_type(filter_type), get_filter_waveshape(filter_type), depth,
                        0.0F);
        filter.render(buf.get_first_sample_ptr(), size, cutoff.get_first_sample_ptr(),
                      resonance.get_first_sample_ptr());
    }
    last_filter_type = filter_type;
}

void MonoEffect::render_exciter(MonoBuffer& buf, int p1) {
    const float amount = exciter_amount(p1);
    float* samples = buf.get_first_sample_ptr();
    for (uint32_t i = 0; i < buf.get_buf_size(); i++)
        samples[i] += std::fabs(samples[i]) * amount;
}

} // namespace tarquil
