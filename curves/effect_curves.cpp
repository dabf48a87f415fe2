// What effects make of a level or a sample.

#include "curves/effect_curves.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "softsynth/effects/compressor.h"
#include "softsynth/effects/distortion.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/mono_effect_quantities.h"
#include "softsynth/wavetables/oscillator.h"

namespace tarquil {

namespace {

float distorted(const uint8_t* p, float x) {
    const float threshold = distortion_threshold(p[0]);
    const float asymmetry = distortion_asymmetry(p[3]);
    float slope = 0.0F;
    float dc_offset = 0.0F;
    float knee_a = 0.0F;
    float knee_b = 0.0F;
    distortion_calc_param(threshold, distortion_drive(p[1]), asymmetry, &slope, &dc_offset, &knee_a,
                          &knee_b);
    return distortion(x, threshold, asymmetry, slope, dc_offset, knee_a, knee_b) *
           distortion_post_gain(p[2]);
}

} // namespace

CompressorCurve band_compressor_curve(const ControllerBytes& bytes, unsigned band) {
    const CompressorBandRows rows = compressor_band_rows(band);
    const auto value = [&](unsigned number) {
        return cubed(map_char_to_float(number, bytes[number]));
    };
    return {value(rows.threshold), value(rows.ratio), value(rows.makeup)};
}

CompressorCurve mono_compressor_curve(const ControllerBytes& bytes, unsigned index) {
    const uint8_t* p = bytes.data() + mono_effect_rows(index).first_parameter;
    return {mono_effect_threshold(p[0]), mono_compressor_ratio(p[1]), mono_compressor_makeup(p[4])};
}

double compressed_decibels(const CompressorCurve& curve, double decibels) {
    const auto level = float(std::pow(10.0, decibels / 20.0));
    return to_decibels(
        double(level * compressor_knee(level, curve.threshold, 1.0F / curve.threshold,
                                       compressor_inv_ratio_minus_one(curve.ratio), curve.makeup)));
}

double to_decibels(double level) {
    return 20.0 * std::log10(std::max(level, 1e-9));
}

float shaped_sample(const ControllerBytes& bytes, unsigned index, float x) {
    const EffectRows rows = mono_effect_rows(index);
    const uint8_t* p = bytes.data() + rows.first_parameter;
    switch (bytes[rows.type]) {
    case MONO_EFFECT_DISTORTION:
        return distorted(p, x);
    case MONO_EFFECT_EXCITER:
        return x + std::fabs(x) * exciter_amount(p[0]);
    default:
        return x;
    }
}

std::vector<float> lfo_wave(const WaveformStore& waves, OscType wave, double cycles, float phase,
                            uint32_t count) {
    // Each sample stands for a longer piece of time than one of the engine's, so the oscillator
    // runs that much faster.
    Oscillator oscillator;
    oscillator.init(waves, wave, 1.0F, phase);
    const auto pitch = std::make_unique<MonoBuffer>();
    const auto out = std::make_unique<MonoBuffer>();
    pitch->init(count);
    out->init(count);
    std::fill_n(pitch->get_first_sample_ptr(), count, float(cycles * SAMPLE_RATE / count));
    oscillator.render_interpolated(*out, *pitch, 0);
    return {out->get_first_sample_ptr(), out->get_first_sample_ptr() + count};
}

} // namespace tarquil
