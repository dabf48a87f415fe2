// What the master section's reverb and retrigger do.

#include "editor/plots/master_plots.h"

#include <algorithm>
#include <cmath>

#include "curves/reverb_decay.h"
#include "editor/plots/envelope_axis.h"
#include "editor/plots/plot_frame.h"
#include "editor/plots/tempo_axis.h"
#include "softsynth/parameters/controller_display.h"

namespace tarquil {

namespace {

// With the host's tempo where it follows that.
double beat_seconds(UiHost& host) {
    const int byte = host.get_model().value(CTRL_RETRIGGER_BPM);
    const ViewState& view = host.get_view_state();
    return view.times.is_on() ? view.times.beat_quarters(byte, TempoValues::LONGEST_BEAT) *
                                    view.seconds_per_quarter()
                              : 60.0 / controller_quantity(CTRL_RETRIGGER_BPM, byte);
}

} // namespace

void ReverbPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    constexpr int NUM_POINTS = 100;
    constexpr double LOWEST_HZ = 20.0;
    constexpr double OCTAVES = 9.965; // to 20 kHz
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const double longest = reverb_decay_seconds(bytes, LOWEST_HZ);
    const double top = std::max(1.0, round_time_above(longest * 1.05));
    const PlotFrame frame(numbered_part(area), LOWEST_HZ, 20000.0, 0.0, top, true);
    frame.draw(canvas, frequency_lines(), time_lines(top), PlotFrame::Numbers::OUTSIDE);
    std::vector<Point> points;
    for (int i = 0; i <= NUM_POINTS; i++) {
        const double hertz = LOWEST_HZ * std::exp2(OCTAVES * i / NUM_POINTS);
        points.push_back(frame.point(hertz, reverb_decay_seconds(bytes, hertz)));
    }
    const bool is_heard = bytes[CTRL_REVERB_WET] > 0;
    const Color color = is_heard ? theme::ACCENT : theme::TEXT_DIM;
    canvas.clip(frame.get_area());
    canvas.fill_below(points, frame.y(0.0), color, 0.14);
    canvas.polyline(points, color, 2);
    canvas.unclip();
    if (!is_heard)
        canvas.text({area.x, area.y, area.w, area.h / 2}, "Wet is at 0: the reverb is not heard",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
}

void RetriggerPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const double beat = beat_seconds(host);
    const int speed_up = int(
        std::lround(controller_quantity(CTRL_RETRIGGER_SPEEDUP, bytes[CTRL_RETRIGGER_SPEEDUP])));
    const bool is_on = speed_up != 0 && bytes[CTRL_RETRIGGER_WET_LEVEL] > 0;
    const PlotFrame frame(numbered_part(area), 0.0, 2.0 * beat, 0.0, 1.05);
    frame.draw(canvas, tempo_lines(host.get_view_state(), 2.0 * beat),
               {{0.5, "half"}, {1.0, "end"}}, PlotFrame::Numbers::OUTSIDE);
    const Rect& inside = frame.get_area();
    const double next = frame.x(beat);
    canvas.line({next, inside.y}, {next, inside.bottom()}, theme::OUTLINE, 1.5);
    const int repeats = std::max(1, std::abs(speed_up));
    canvas.clip(inside);
    for (int i = 0; i < 2 * repeats; i++) {
        const double from = beat * i / repeats;
        const double to = beat * (i + 1) / repeats;
        const bool is_backwards = speed_up < 0;
        canvas.line(frame.point(from, is_backwards ? 1.0 : 0.0),
                    frame.point(to, is_backwards ? 0.0 : 1.0),
                    is_on ? theme::PARTS[i < repeats ? 0 : 1] : theme::TEXT_DIM, 1.8);
    }
    canvas.unclip();
    if (!is_on) {
        const std::string hint = "Choose a speed-up and a wet level to repeat beats";
        const double width = canvas.text_width(hint, theme::NORMAL) + 24;
        const Rect place{inside.center().x - width / 2, inside.y + inside.h / 4 - 12, width, 24};
        canvas.fill(place, theme::WELL, 4);
        canvas.text(place, hint, {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
    }
}

} // namespace tarquil
