// The stereo effect over time.

#include "editor/plots/stereo_effect_plot.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "curves/effect_curves.h"
#include "editor/plots/envelope_axis.h"
#include "editor/plots/plot_frame.h"
#include "editor/plots/tempo_axis.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/stereo_effect_quantities.h"

namespace tarquil {

namespace {

constexpr double NAMES_HEIGHT = 20.0; // above the curves
constexpr Color SIDES[] = {theme::PARTS[0], theme::PARTS[1]};

// As it sounds now, with the host's tempo where it follows that.
double delay_seconds(UiHost& host, int byte) {
    const TempoValues& times = host.get_view_state().times;
    return times.is_on() ? double(times.delay_samples(byte)) / SAMPLE_RATE
                         : double(stereo_delay_seconds(byte));
}

void draw_side_names(Canvas& canvas, const Rect& area) {
    canvas.text({area.right() - 70, area.y + 4, 30, 14}, "left", {9.5, SIDES[0]});
    canvas.text({area.right() - 40, area.y + 4, 34, 14}, "right", {9.5, SIDES[1]});
}

// Left upwards and right downwards; heights are the cube roots of the levels, as the knobs' are.
void draw_echoes(Canvas& canvas, const Rect& area, const double* seconds, double feedback,
                 double wet) {
    constexpr double LOWEST_LEVEL = 0.001;
    constexpr double WIDE = 200.0;
    const double shown_seconds = area.w > WIDE ? 3.0 : 1.6;
    const PlotFrame frame(area, -0.05, shown_seconds, -1.1, 1.1);
    frame.draw(canvas, {{0.5, ""}, {1.0, "1 s"}, {1.5, ""}, {2.0, "2 s"}, {2.5, ""}}, {{0.0, ""}});
    if (area.w > WIDE)
        draw_side_names(canvas, area);
    const double zero = frame.y(0.0);
    canvas.line({frame.x(0.0), frame.y(1.0)}, {frame.x(0.0), frame.y(-1.0)}, theme::TEXT_MUTED, 2);
    for (int side = 0; side < 2; side++) {
        double level = wet;
        const int num_echoes = int(shown_seconds / seconds[side]);
        for (int echo = 1; echo <= num_echoes && level > LOWEST_LEVEL; echo++) {
            const double time = echo * seconds[side];
            const double height = std::cbrt(level) * (side == 0 ? 1.0 : -1.0);
            canvas.line({frame.x(time), zero}, frame.point(time, height), SIDES[side], 2.5);
            level *= feedback;
        }
    }
}

void draw_sweep(Canvas& canvas, const Rect& area, UiHost& host, double delay_ms, double amount_ms,
                double hertz, OscType wave) {
    constexpr uint32_t NUM_SAMPLES = 512;
    const double shown_seconds = std::clamp(round_time_above(2.0 / hertz), 0.5, 20.0);
    // From a little below the shortest delay to a little above the longest.
    const double margin = std::max(0.05, amount_ms * 0.15);
    const double lowest = std::max(0.0, delay_ms - margin);
    const double highest = delay_ms + amount_ms + margin;
    Rect inside = numbered_part(area);
    const Rect names = inside.cut_top(NAMES_HEIGHT);
    const PlotFrame frame(inside, 0.0, shown_seconds, lowest, highest);
    const double step = round_time_above((highest - lowest) / 6.0);
    std::vector<GridLine> rows;
    for (double ms = std::ceil(lowest / step) * step; ms < highest; ms += step)
        rows.push_back({ms, trimmed_number(ms, 2)});
    frame.draw(canvas, tempo_lines(host.get_view_state(), shown_seconds), rows,
               PlotFrame::Numbers::OUTSIDE);
    canvas.text({area.x, names.y + 4, inside.x - area.x - 4, 14}, "ms",
                {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    const WaveformStore& waves = host.get_model().get_synth().get_waves();
    for (int side = 1; side >= 0; side--) {
        const std::vector<float> sweep = lfo_wave(waves, wave, hertz * shown_seconds,
                                                  side == 0 ? 0.0F : RIGHT_LFO_LEAD, NUM_SAMPLES);
        std::vector<Point> points;
        for (uint32_t i = 0; i < NUM_SAMPLES; i++)
            points.push_back(frame.point(shown_seconds * i / NUM_SAMPLES,
                                         delay_ms + amount_ms * (1.0 + double(sweep[i])) / 2));
        canvas.polyline(points, SIDES[side], 1.8);
    }
    draw_side_names(canvas, names);
}

} // namespace

void StereoEffectPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    constexpr double MS_PER_SAMPLE = 1000.0 / SAMPLE_RATE;
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const uint8_t* p = bytes.data() + STEREO_EFFECT_ROWS.first_parameter;
    const double wet = controller_quantity(CTRL_CHANFX2_WET, bytes[CTRL_CHANFX2_WET]);
    const unsigned type = bytes[STEREO_EFFECT_ROWS.type];
    if (type == STEREO_EFFECT_DELAY) {
        const double seconds[] = {delay_seconds(host, p[0]), delay_seconds(host, p[1])};
        draw_echoes(canvas, area, seconds, double(stereo_effect_feedback(p[2])), wet);
    } else if (type != STEREO_EFFECT_OFF) {
        const float delay =
            type == STEREO_EFFECT_CHORUS ? chorus_delay_samples(p[0]) : flanger_delay_samples(p[0]);
        const TempoValues& times = host.get_view_state().times;
        const float hertz = times.is_on() ? times.sweep_hz(p[1]) : stereo_lfo_hz(p[1]);
        draw_sweep(canvas, area, host, double(delay) * MS_PER_SAMPLE,
                   double(stereo_lfo_samples(p[2])) * MS_PER_SAMPLE, double(hertz), OscType(p[3]));
        if (times.is_on())
            draw_tempo(canvas, {area.x, area.y, area.w - 70, area.h}, host.get_view_state(),
                       double(hertz));
    } else {
        const PlotFrame frame(area, 0.0, 2.0, -1.0, 1.0);
        frame.draw(canvas, {{0.5, ""}, {1.0, "1 s"}, {1.5, ""}},
                   {{-0.5, ""}, {0.0, ""}, {0.5, ""}});
        canvas.text({area.x, area.y, area.w, area.h / 2}, "Choose a type to switch the effect on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    }
}

void MasterDelayPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const auto quantity = [&](unsigned number) {
        return controller_quantity(number, bytes[number]);
    };
    const double seconds[] = {delay_seconds(host, bytes[CTRL_DELAY_LEFT_TIME]),
                              delay_seconds(host, bytes[CTRL_DELAY_RIGHT_TIME])};
    draw_echoes(canvas, area, seconds, quantity(CTRL_DELAY_FEEDBACK), 1.0);
}

} // namespace tarquil
