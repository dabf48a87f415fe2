// What an insert effect does to a sound.

#include "editor/plots/mono_effect_plot.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "curves/effect_curves.h"
#include "editor/plots/filter_plot.h"
#include "editor/plots/plot_frame.h"
#include "editor/plots/response_worker.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/mono_effect_quantities.h"

namespace tarquil {

namespace {

constexpr int NUM_POINTS = 200;
constexpr double QUIETEST_ECHO = -60.0; // dB

} // namespace

void MonoEffectPlot::draw_transfer(Canvas& canvas, const ControllerBytes& bytes,
                                   Color color) const {
    std::vector<PlotPoint> curve;
    double range = 1.0;
    for (int i = 0; i <= NUM_POINTS; i++) {
        const double x = 2.0 * i / NUM_POINTS - 1.0;
        curve.push_back({x, double(shaped_sample(bytes, effect, float(x)))});
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

void MonoEffectPlot::draw_compressor(Canvas& canvas, const ControllerBytes& bytes) const {
    const PlotFrame frame(area, QUIETEST_ECHO, 6.0, QUIETEST_ECHO, 12.0);
    frame.draw(canvas, decibel_lines(-48, 0, 12), decibel_lines(-48, 0, 12));
    const CompressorCurve curve = mono_compressor_curve(bytes, effect);
    std::vector<Point> points;
    for (int i = 0; i <= NUM_POINTS; i++) {
        const double in = QUIETEST_ECHO + i * 66.0 / NUM_POINTS;
        points.push_back(frame.point(in, compressed_decibels(curve, in)));
    }
    canvas.clip(area);
    canvas.line(frame.point(QUIETEST_ECHO, QUIETEST_ECHO), frame.point(6.0, 6.0),
                theme::GRID_STRONG, 1);
    canvas.polyline(points, theme::PARTS[effect], 2);
    canvas.unclip();
}

// A sine of 128 samples a period, held and cut as the effect does it.
void MonoEffectPlot::draw_lofi(Canvas& canvas, const ControllerBytes& bytes) const {
    constexpr int PERIOD = 128;
    const PlotFrame frame(area, 0.0, 2.0 * PERIOD, -1.2, 1.2);
    frame.draw(canvas, {{PERIOD, ""}}, {{-1.0, "-1"}, {0.0, "0"}, {1.0, "1"}});
    const double step = std::ldexp(1.0, lofi_bits_off(bytes[rows.parameter(0)]) - 24);
    const int period = lofi_period(bytes[rows.parameter(1)]);
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

void MonoEffectPlot::draw_filter(Canvas& canvas, UiHost& host, const ControllerBytes& bytes) const {
    const FilterSettings filter = mono_effect_filter_settings(bytes, effect);
    const Response& response = host.get_responses().get(MONO_EFFECT_RESPONSE + effect, filter);
    const PlotFrame frame = frequency_frame(area, -60.0, 30.0);
    frame.draw(canvas, frequency_lines(), decibel_lines(-48, 24, 12));
    canvas.clip(area);
    canvas.polyline(response_points(frame, response), theme::PARTS[effect], 2);
    canvas.unclip();
}

void MonoEffectPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    switch (bytes[rows.type]) {
    case MONO_EFFECT_DISTORTION:
    case MONO_EFFECT_EXCITER:
        draw_transfer(canvas, bytes, theme::PARTS[effect]);
        break;
    case MONO_EFFECT_COMPRESSOR:
        draw_compressor(canvas, bytes);
        break;
    case MONO_EFFECT_LOFI:
        draw_lofi(canvas, bytes);
        break;
    case MONO_EFFECT_FILTER:
        draw_filter(canvas, host, bytes);
        break;
    default:
        draw_transfer(canvas, bytes, theme::TEXT_DIM);
        canvas.text({area.x, area.y, area.w, area.h / 4}, "Choose a type to switch the effect on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    }
}

} // namespace tarquil
