// The plots of an instrument's filters, waveform and envelopes.

#include "tools/plot/instrument_plots.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "common/number_text.h"
#include "curves/wave_shape.h"
#include "player/shared_waveforms.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/parameters/quantity_text.h"

namespace tarquil {

namespace {

constexpr double LOWEST_FREQUENCY = 20.0;     // Hz
constexpr double HIGHEST_FREQUENCY = 20000.0; // Hz
constexpr unsigned NUM_FREQUENCIES = 601;     // 60 an octave

// Levels in dB: steps of the range, and how far it reaches at least and at most.
constexpr double GAIN_STEP = 12.0;
constexpr double LOWEST_TOP = 12.0;
constexpr double HIGHEST_BOTTOM = -24.0;
constexpr double LOWEST_BOTTOM = -84.0;

std::string type_or_off(const FilterSettings& filter) {
    return is_filter_on(filter) ? filter_type_label(filter.type) : "off";
}

std::string settings_detail(const FilterSettings& filter) {
    return quantity_text(cutoff_hertz(filter), Unit::HERTZ) + ", " +
           quantity_text(double(filter.resonance), Unit::Q);
}

// Evenly spread, and the cutoffs, where the tip of a narrow peak or notch is.
std::vector<double> plot_frequencies(const std::vector<FilterSettings>& filters) {
    std::vector<double> frequencies =
        spread_frequencies(LOWEST_FREQUENCY, HIGHEST_FREQUENCY, NUM_FREQUENCIES);
    for (const FilterSettings& filter : filters) {
        const double cutoff = cutoff_hertz(filter);
        if (cutoff > LOWEST_FREQUENCY && cutoff < HIGHEST_FREQUENCY)
            frequencies.push_back(cutoff);
    }
    std::sort(frequencies.begin(), frequencies.end());
    return frequencies;
}

std::vector<PlotPoint> points_of(const std::vector<double>& x, const std::vector<double>& y) {
    std::vector<PlotPoint> points;
    for (size_t i = 0; i < x.size(); i++)
        points.push_back({x[i], y[i]});
    return points;
}

PlotAxis gain_axis(const std::vector<PlotCurve>& curves) {
    double top = LOWEST_TOP;
    double bottom = HIGHEST_BOTTOM;
    for (const PlotCurve& curve : curves) {
        for (const PlotPoint& point : curve.points) {
            top = std::max(top, std::ceil(point.y / GAIN_STEP) * GAIN_STEP);
            bottom = std::min(bottom, std::floor(point.y / GAIN_STEP) * GAIN_STEP);
        }
    }
    return PlotAxis::linear("Gain (dB)", std::max(bottom, LOWEST_BOTTOM), top, GAIN_STEP);
}

Plot response_plot(std::string title, std::vector<PlotCurve> curves) {
    PlotAxis gains = gain_axis(curves);
    return {std::move(title),
            PlotAxis::logarithmic("Frequency (Hz)", LOWEST_FREQUENCY, HIGHEST_FREQUENCY),
            std::move(gains), std::move(curves)};
}

std::string display(const Instrument& instrument, unsigned number) {
    return controller_display(number, instrument.get_controller(number));
}

std::vector<PlotPoint> wave_points(const std::vector<float>& samples) {
    std::vector<PlotPoint> points;
    for (size_t i = 0; i < samples.size(); i++)
        points.push_back({1000.0 * double(i) / SAMPLE_RATE, double(samples[i])});
    return points;
}

} // namespace

std::string filter_type_label(FilterType type) {
    return controller_display(CTRL_FILTER1_TYPE, type);
}

Plot plot_filter(const FilterSettings& filter) {
    const std::vector<double> frequencies = plot_frequencies({filter});
    PlotCurve curve{type_or_off(filter),
                    {settings_detail(filter)},
                    points_of(frequencies, filter_gains(filter, frequencies)),
                    true};
    return response_plot("Frequency response", {std::move(curve)});
}

Plot plot_instrument_filters(const Instrument& instrument, int note) {
    const FilterSettings voice = voice_filter_settings(instrument.get_bytes(), note);
    std::vector<FilterSettings> filters{voice};
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++)
        filters.push_back(
            equaliser_filter_settings(instrument.get_bytes(), channel_filter_rows(i)));
    const std::vector<double> frequencies = plot_frequencies(filters);
    const std::vector<double> voice_gains = filter_gains(voice, frequencies);
    PlotCurve voice_curve{
        "Voice filter", {type_or_off(voice)}, points_of(frequencies, voice_gains)};
    if (is_filter_on(voice))
        voice_curve.details.push_back(settings_detail(voice));

    std::vector<double> channel_gains(frequencies.size());
    PlotCurve channel_curve{"Channel filters", {}, {}};
    for (unsigned i = 1; i <= NUM_CHANNEL_FILTERS; i++) {
        const FilterSettings& filter = filters[i];
        if (!is_filter_on(filter))
            continue;
        channel_curve.details.push_back(filter_type_label(filter.type) + ", " +
                                        settings_detail(filter));
        const std::vector<double> gains = filter_gains(filter, frequencies);
        std::transform(gains.begin(), gains.end(), channel_gains.begin(), channel_gains.begin(),
                       std::plus<>());
    }
    if (channel_curve.details.empty())
        channel_curve.details.emplace_back("off");
    channel_curve.points = points_of(frequencies, channel_gains);

    std::transform(voice_gains.begin(), voice_gains.end(), channel_gains.begin(),
                   channel_gains.begin(), std::plus<>());
    PlotCurve sum{"All filters", {}, points_of(frequencies, channel_gains), true};
    return response_plot("Filters: " + instrument.get_name(),
                         {std::move(sum), std::move(voice_curve), std::move(channel_curve)});
}

Plot plot_wave(const Instrument& instrument, int note, int periods) {
    const double length = periods / double(note_frequency(float(note))); // seconds
    const WaveShape shape = render_wave_shape(shared_waveforms(), instrument.get_bytes(), note,
                                              uint32_t(std::ceil(length * SAMPLE_RATE)) + 1);
    const bool ring = instrument.get_controller(CTRL_OSC1_OSC2_RING_MODULATOR) != 0;
    std::vector<PlotCurve> curves{{"Mix", {}, wave_points(shape.mix), true}};
    if (ring)
        curves[0].details.emplace_back("1 and 2 ring modulated");
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        if (!shape.parts[i].empty())
            curves.push_back({"Oscillator " + std::to_string(i + 1),
                              {display(instrument, CTRL_OSC1_TYPE + i)},
                              wave_points(shape.parts[i])});
    }
    if (curves.size() == 2) { // alone, it is the mix
        curves[1].is_main = true;
        curves.erase(curves.begin());
    }
    double highest = 0.1;
    for (const PlotCurve& curve : curves) {
        for (const PlotPoint& point : curve.points)
            highest = std::max(highest, std::abs(point.y));
    }
    const double range = 1.1 * highest;
    std::string title = "Waveform: " + instrument.get_name() + ", note " + std::to_string(note);
    return {std::move(title), PlotAxis::linear("Time (ms)", 0.0, 1000.0 * length),
            PlotAxis::linear("Amplitude", -range, range), std::move(curves)};
}

Plot plot_envelopes(const Instrument& instrument, double hold) {
    static constexpr const char* NAMES[] = {"Envelope 1 (amplitude)", "Envelope 2", "Envelope 3"};
    std::vector<PlotCurve> curves;
    double end = 0.0;
    for (unsigned i = 0; i < NUM_ENVELOPES; i++) {
        PlotCurve curve{NAMES[i],
                        {"attack " + display(instrument, CTRL_ENV1_ATTACK + i) + ", decay " +
                             display(instrument, CTRL_ENV1_DECAY + i),
                         "sustain " + display(instrument, CTRL_ENV1_SUSTAIN + i) + ", release " +
                             display(instrument, CTRL_ENV1_RELEASE + i)},
                        envelope_points(instrument.get_bytes(), i, hold)};
        end = std::max(end, curve.points.back().x);
        curves.push_back(std::move(curve));
    }
    std::string title =
        "Envelopes: " + instrument.get_name() + ", held for " + trimmed_number(hold, 3) + " s";
    return {std::move(title), PlotAxis::linear("Time (s)", 0.0, end * 1.02),
            PlotAxis::linear("Level", 0.0, 1.05), std::move(curves)};
}

} // namespace tarquil
