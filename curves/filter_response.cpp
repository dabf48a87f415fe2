// The gain of filters over frequency.

#include "curves/filter_response.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "softsynth/filters/ladderfilter.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/parameters/mono_effect_quantities.h"
#include "softsynth/parameters/note_frequency.h"

namespace tarquil {

namespace {

// The ladder's curve is straight to one part in a million at this amplitude.
constexpr float IMPULSE = 0.001F;

// 0.74 s: a section of the lowest cutoff (20 Hz) and the highest Q of an instrument (7.5) has died
// down by 50 dB.
constexpr unsigned NUM_BLOCKS = 16;

double decibels(double gain) {
    return gain > 0.0 ? std::max(MIN_GAIN_DB, 20 * std::log10(gain)) : MIN_GAIN_DB;
}

double radians_per_sample(double frequency) {
    return 2 * std::numbers::pi * frequency / SAMPLE_RATE;
}

bool has_waveshaper(const FilterSettings& filter) {
    return !is_ladder_filter(filter.type) && get_filter_waveshape(filter.type) != 0;
}

Filter make_biquad(const FilterSettings& settings) {
    Filter filter;
    filter.init(get_base_filter_type(settings.type), get_filter_waveshape(settings.type),
                settings.depth, settings.key_frequency);
    filter.set_octaves_cutoff(settings.cutoff_octaves);
    filter.set_resonance(settings.resonance);
    filter.set_dbgain_normalized(settings.gain);
    filter.update();
    return filter;
}

// Calls render(samples, count) for each block of an impulse.
template <typename Render> std::vector<float> impulse_through(const Render& render) {
    std::vector<float> samples(size_t(NUM_BLOCKS) * MAX_NUM_SAMPLES);
    samples[0] = IMPULSE;
    for (unsigned block = 0; block < NUM_BLOCKS; block++)
        render(samples.data() + size_t(block) * MAX_NUM_SAMPLES, MAX_NUM_SAMPLES);
    // What still rings at the end is faded out: cut off, it would ripple over all frequencies.
    const size_t fade = samples.size() / 2;
    for (size_t i = 0; i < fade; i++)
        samples[fade + i] *=
            float(0.5 + 0.5 * std::cos(std::numbers::pi * double(i) / double(fade)));
    return samples;
}

// With scratch of its own: an editor asks while the audio thread renders with other ladders.
std::vector<float> ladder_impulse_response(const FilterSettings& settings) {
    constexpr size_t OVERSAMPLING = 4;
    LadderFilter filter;
    filter.init(settings.type, settings.key_frequency);
    filter.set_octaves_cutoff(settings.cutoff_octaves);
    filter.set_resonance(settings.resonance);
    filter.update();
    std::vector<float> oversampled(OVERSAMPLING * MAX_NUM_SAMPLES);
    AltDownsampler decimate_176khz;
    AltDownsampler decimate_88khz;
    return impulse_through([&](float* samples, uint32_t count) {
        filter.render_chunk(samples, oversampled.data(), count);
        decimate_176khz.resample(oversampled.data(), oversampled.data(), 2 * count);
        decimate_88khz.resample(oversampled.data(), samples, count);
    });
}

std::vector<float> biquad_impulse_response(const FilterSettings& settings) {
    const std::vector<float> cutoff(MAX_NUM_SAMPLES, settings.cutoff_octaves);
    const std::vector<float> resonance(MAX_NUM_SAMPLES, settings.resonance);
    Filter filter = make_biquad(settings);
    return impulse_through([&](float* samples, uint32_t count) {
        filter.render(samples, count, cutoff.data(), resonance.data());
    });
}

// The Fourier sum at one frequency, by G. Goertzel's recurrence (1958).
double gain_at(const std::vector<float>& response, double omega) {
    const double coefficient = 2 * std::cos(omega);
    double s1 = 0.0;
    double s2 = 0.0;
    for (const float sample : response) {
        const double s0 = double(sample) + coefficient * s1 - s2;
        s2 = s1;
        s1 = s0;
    }
    return std::abs(s1 - s2 * std::polar(1.0, -omega)) / double(IMPULSE);
}

// Of all sections, in double precision: at low frequencies nearly all of it cancels.
double biquad_gain(const Filter& filter, double omega) {
    const BiquadCoefficients& c = filter.get_coefficients();
    const std::complex<double> z1 = std::polar(1.0, -omega);
    const std::complex<double> above = double(c.b0) + (double(c.b1) + double(c.b2) * z1) * z1;
    const std::complex<double> below = 1.0 + (double(c.a1) + double(c.a2) * z1) * z1;
    return std::pow(std::abs(above / below), double(filter.get_depth()));
}

} // namespace

bool is_filter_on(const FilterSettings& filter) {
    return is_filter_on(filter.type, filter.depth);
}

FilterSettings voice_filter_settings(const ControllerBytes& bytes, int note) {
    const auto mapped = [&](unsigned number) { return map_char_to_float(number, bytes[number]); };
    FilterSettings filter;
    filter.type = FilterType(bytes[CTRL_FILTER1_TYPE]);
    filter.depth = bytes[CTRL_FILTER1_DEPTH];
    filter.cutoff_octaves = mapped(CTRL_FILTER1_CUTOFF);
    filter.resonance = mapped(CTRL_FILTER1_RESONANCE);
    if (bytes[CTRL_FILTER1_KEY_FOLLOW] != 0)
        filter.key_frequency = note_frequency(float(note));
    return filter;
}

FilterSettings equaliser_filter_settings(const ControllerBytes& bytes, const FilterRows& rows) {
    const auto mapped = [&](unsigned number) { return map_char_to_float(number, bytes[number]); };
    FilterSettings filter;
    filter.type = FilterType(bytes[rows.type]);
    filter.depth = 1;
    filter.cutoff_octaves = mapped(rows.cutoff);
    filter.resonance = mapped(rows.resonance);
    filter.gain = mapped(rows.gain);
    return filter;
}

FilterSettings mono_effect_filter_settings(const ControllerBytes& bytes, unsigned index) {
    const EffectRows rows = mono_effect_rows(index);
    const auto mapped = [&](unsigned number) { return map_char_to_float(number, bytes[number]); };
    FilterSettings filter;
    filter.type = mono_filter_type(bytes[rows.parameter(2)]);
    filter.depth = mono_filter_depth(bytes[rows.parameter(3)]);
    filter.cutoff_octaves = mapped(rows.parameter(0));
    filter.resonance = mapped(rows.parameter(1));
    return filter;
}

double cutoff_hertz(const FilterSettings& filter) {
    return cutoff_hertz(filter.cutoff_octaves) + double(filter.key_frequency);
}

std::vector<double> filter_gains(const FilterSettings& filter,
                                 const std::vector<double>& frequencies) {
    std::vector<double> gains;
    gains.reserve(frequencies.size());
    if (is_ladder_filter(filter.type) || has_waveshaper(filter)) {
        const std::vector<float> response = is_ladder_filter(filter.type)
                                                ? ladder_impulse_response(filter)
                                                : biquad_impulse_response(filter);
        for (const double frequency : frequencies)
            gains.push_back(decibels(gain_at(response, radians_per_sample(frequency))));
        return gains;
    }
    const Filter biquad = make_biquad(filter);
    for (const double frequency : frequencies)
        gains.push_back(decibels(biquad_gain(biquad, radians_per_sample(frequency))));
    return gains;
}

std::vector<double> spread_frequencies(double first, double last, unsigned count) {
    std::vector<double> frequencies;
    frequencies.reserve(count);
    for (unsigned i = 0; i < count; i++)
        frequencies.push_back(first * std::pow(last / first, double(i) / (count - 1)));
    return frequencies;
}

} // namespace tarquil
