// What an insert effect does to a sound.

#include "editor/plots/mono_effect_plot.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "editor/plots/filter_plot.h"
#include "editor/plots/plot_frame.h"
#include "editor/plots/response_worker.h"
#include "softsynth/effects/compressor.h"
#include "softsynth/effects/distortion.h"
#include "softsynth/effects/mono_effect.h"
#include "softsynth/parameters/mono_effect_quantities.h"

namespace tarquil {

namespace {

constexpr int NUM_POINTS = 200;
constexpr double QUIETEST = -60.0; // dB

double from_decibels(double gain) {
    return std::pow(10.0, gain / 20.0);
}

double to_decibels(double level) {
    return 20.0 * std::log10(std::max(level, 1e-9));
}

} // namespace

template <typename Shape>
void MonoEffectPlot::draw_transfer(Canvas& canvas, const Shape& shape, Color color) const {
    std::vector<PlotPoint> curve;
    double range = 1.0;
    for (int i = 0; i <= NUM_POINTS; i++) {
        const double x = 2.0 * i / NUM_POINTS - 1.0;
        curve.push_back({x, double(shape(float(x)))});
        range = std::max(range, std::abs(curve.back().y));
    }
    const PlotFrame frame(area, -1.0, 1.0, -range * 1.05, range * 1.05);
    frame.draw(canvas, {{-0.5, ""}, {0.0, "in"}, {0.5, ""}},
               {{-1.0, "-1"}, {0.0, "0"}, {1.0, "1"}});
    canvas.clip(area);
    canvas.line(frame.point(-1.0, -1.0), frame.point(1.0, 1.0), theme::GRID_STRONG, 1);
    std::vector<Point> points;
    points.reserve(curve.size());
    for (const PlotPoint& point : curve)
        points.push_back(frame.point(point.x, point.y));
    canvas.polyline(points, color, 2);
    canvas.unclip();
}

void MonoEffectPlot::draw_compressor(Canvas& canvas, const int* parameters) const {
    const PlotFrame frame(area, QUIETEST, 6.0, QUIETEST, 12.0);
    frame.draw(canvas, decibel_lines(-48, 0, 12), decibel_lines(-48, 0, 12));
    const float threshold = mono_effect_threshold(parameters[0]);
    const float exponent = compressor_inv_ratio_minus_one(mono_compressor_ratio(parameters[1]));
    const float makeup = mono_compressor_makeup(parameters[4]);
    std::vector<Point> points;
    for (int i = 0; i <= NUM_POINTS; i++) {
        const double in = QUIETEST + i * 66.0 / NUM_POINTS;
        const auto level = float(from_decibels(in));
        const float gain = compressor_knee(level, threshold, 1.0F / threshold, exponent, makeup);
        points.push_back(frame.point(in, to_decibels(double(level * gain))));
    }
    canvas.clip(area);
    canvas.line(frame.point(QUIETEST, QUIETEST), frame.point(6.0, 6.0), theme::GRID_STRONG, 1);
    canvas.polyline(points, theme::PARTS[effect], 2);
    canvas.unclip();
}

// A sine of 128 samples a period, held and cut as the effect does it.
void MonoEffectPlot::draw_lofi(Canvas& canvas, const int* parameters) const {
    constexpr int PERIOD = 128;
    const PlotFrame frame(area, 0.0, 2.0 * PERIOD, -1.2, 1.2);
    frame.draw(canvas, {{PERIOD, ""}}, {{-1.0, "-1"}, {0.0, "0"}, {1.0, "1"}});
    const double step = std::ldexp(1.0, lofi_bits_off(parameters[0]) - 24);
    const int period = lofi_period(parameters[1]);
    std::vector<Point> points;
    for (int i = 0; i < 2 * PERIOD; i++) {
        const double sine = std::sin(2.0 * std::numbers::pi * double(i - i % period) / PERIOD);
        const double held = std::floor(sine / step) * step;
        points.push_back(frame.point(i, held));
        points.push_back(frame.point(i + 1, held));
    }
    canvas.clip(area);
    canvas.polyline(points, theme::PARTS[effect], 1.8);
    canvas.unclip();
}

void MonoEffectPlot::draw_filter(Canvas& canvas, UiHost& host, const int* parameters) const {
    FilterSettings filter;
    filter.type = mono_filter_type(parameters[2]);
    filter.depth = mono_filter_depth(parameters[3]);
    filter.cutoff_octaves = map_char_to_float(CTRL_CHANFX1_PARAM1, parameters[0]);
    filter.resonance = map_char_to_float(CTRL_CHANFX1_PARAM2, parameters[1]);
    const Response& response = host.get_responses().get(MONO_EFFECT_RESPONSE + effect, filter);
    const PlotFrame frame(area, 20.0, 20000.0, -60.0, 30.0, true);
    frame.draw(canvas, frequency_lines(), decibel_lines(-48, 24, 12));
    std::vector<Point> points;
    for (size_t i = 0; i < response.size(); i++)
        points.push_back(frame.point(response_frequencies()[i], response[i]));
    canvas.clip(area);
    canvas.polyline(points, theme::PARTS[effect], 2);
    canvas.unclip();
}

void MonoEffectPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const unsigned first = effect == 0 ? CTRL_CHANFX1_PARAM1 : CTRL_CHANFX1B_PARAM1;
    int p[5];
    std::copy_n(bytes.begin() + first, 5, p);
    switch (bytes[effect == 0 ? CTRL_CHANFX1_TYPE : CTRL_CHANFX1B_TYPE]) {
    case MonoEffect::MONO_EFFECT_DISTORTION: {
        float slope = 0.0F;
        float dc_offset = 0.0F;
        float knee_a = 0.0F;
        float knee_b = 0.0F;
        const float threshold = distortion_threshold(p[0]);
        const float asymmetry = distortion_asymmetry(p[3]);
        distortion_calc_param(threshold, distortion_drive(p[1]), asymmetry, &slope, &dc_offset,
                              &knee_a, &knee_b);
        draw_transfer(
            canvas,
            [&](float x) {
                return distortion(x, threshold, asymmetry, slope, dc_offset, knee_a, knee_b) *
                       distortion_post_gain(p[2]);
            },
            theme::PARTS[effect]);
        break;
    }
    case MonoEffect::MONO_EFFECT_COMPRESSOR:
        draw_compressor(canvas, p);
        break;
    case MonoEffect::MONO_EFFECT_LOFI:
        draw_lofi(canvas, p);
        break;
    case MonoEffect::MONO_EFFECT_FILTER:
        draw_filter(canvas, host, p);
        break;
    case MonoEffect::MONO_EFFECT_EXCITER:
        draw_transfer(
            canvas, [&](float x) { return x + std::fabs(x) * exciter_amount(p[0]); },
            theme::PARTS[effect]);
        break;
    default:
        draw_transfer(
            canvas, [](float x) { return x; }, theme::TEXT_DIM);
        canvas.text({area.x, area.y, area.w, area.h / 4}, "Choose a type to switch the effect on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    }
}

} // namespace tarquil
