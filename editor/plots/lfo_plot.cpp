// An LFO over the first seconds of a note.

#include "editor/plots/lfo_plot.h"

#include <algorithm>
#include <cmath>

#include "curves/effect_curves.h"
#include "editor/plots/envelope_axis.h"
#include "editor/plots/plot_frame.h"
#include "editor/plots/tempo_axis.h"
#include "softsynth/parameters/control_use.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_SAMPLES = 512;
constexpr double FEWEST_PERIODS = 2.0; // shown
constexpr double PHASE_RADIUS = 5.0;

PlotFrame frame_of(const Rect& area, double seconds) {
    return {area, 0.0, seconds, -1.25, 1.25};
}

} // namespace

void LfoPlot::compute(EditorSynth& synth, const ControllerBytes& bytes, double cycles) {
    const std::vector<int> from{bytes[rows.type], bytes[rows.phase]};
    if (from == computed_from && cycles == computed_cycles)
        return;
    computed_from = from;
    computed_cycles = cycles;
    samples = lfo_wave(synth.get_waves(), OscType(bytes[rows.type]), cycles,
                       map_char_to_float(rows.phase, bytes[rows.phase]), NUM_SAMPLES);
}

double LfoPlot::hertz(UiHost& host) const {
    const int byte = host.get_model().value(rows.speed);
    const TempoValues& times = host.get_view_state().times;
    return times.is_on() ? double(times.lfo_hz(lfo)[byte]) : controller_quantity(rows.speed, byte);
}

double LfoPlot::shown_seconds(UiHost& host) const {
    return round_time_above(FEWEST_PERIODS / hertz(host));
}

Point LfoPlot::dot(UiHost& host) const {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const NoteView& note = host.get_meters().note;
    if (note.is_sounding == 0 || samples.empty() || !is_modulation_source(INFL_LFO1 + lfo, bytes))
        return NOWHERE;
    // Within the first cycle: the phase alone does not tell which one it is.
    const double start = double(map_char_to_float(rows.phase, bytes[rows.phase]));
    const double cycles = double(note.lfo_phases[lfo]) - start;
    const double part = (cycles - std::floor(cycles)) / (hertz(host) * shown_seconds(host));
    const auto index = std::min(size_t(part * NUM_SAMPLES), samples.size() - 1);
    return frame_of(area, shown_seconds(host))
        .point(part * shown_seconds(host), double(samples[index]));
}

void LfoPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const double seconds = shown_seconds(host);
    compute(host.get_model().get_synth(), bytes, hertz(host) * seconds);
    const PlotFrame frame = frame_of(area, seconds);
    frame.draw(canvas, tempo_lines(host.get_view_state(), seconds),
               {{-1.0, "-1"}, {0.0, "0"}, {1.0, "1"}});
    std::vector<Point> points;
    for (size_t i = 0; i < samples.size(); i++)
        points.push_back(frame.point(seconds * double(i) / NUM_SAMPLES, double(samples[i])));
    const bool is_used = is_controller_used(rows.speed, bytes);
    canvas.clip(area);
    canvas.wave(points, is_used ? theme::PARTS[lfo] : theme::TEXT_DIM, 1.6);
    drawn_dot = dot(host);
    canvas.disc(drawn_dot, PHASE_RADIUS, theme::TEXT);
    canvas.unclip();
    if (host.get_view_state().times.is_on())
        draw_tempo(canvas, area, host.get_view_state(), hertz(host));
}

std::vector<Rect> LfoPlot::moved_areas(UiHost& host) {
    return moved_dot(drawn_dot, dot(host), PHASE_RADIUS);
}

} // namespace tarquil
