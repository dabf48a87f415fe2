// An LFO over the first seconds of a note.

#include "editor/plots/lfo_plot.h"

#include "common/number_text.h"
#include "curves/effect_curves.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/control_use.h"
#include "softsynth/parameters/controller_display.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_SAMPLES = 512;
constexpr double FEWEST_PERIODS = 2.0; // shown
constexpr double SHORTEST_SECONDS = 2.0;

} // namespace

void LfoPlot::compute(EditorSynth& synth, const ControllerBytes& bytes, double seconds) {
    const std::vector<int> from{bytes[rows.type], bytes[rows.speed], bytes[rows.phase]};
    if (from == computed_from)
        return;
    computed_from = from;
    samples = lfo_wave(synth.get_waves(), OscType(bytes[rows.type]),
                       controller_quantity(rows.speed, bytes[rows.speed]) * seconds,
                       map_char_to_float(rows.phase, bytes[rows.phase]), NUM_SAMPLES);
}

void LfoPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const double hertz = controller_quantity(rows.speed, bytes[rows.speed]);
    double seconds = SHORTEST_SECONDS;
    while (seconds * hertz < FEWEST_PERIODS)
        seconds *= 2.0;
    compute(host.get_model().get_synth(), bytes, seconds);
    const PlotFrame frame(area, 0.0, seconds, -1.25, 1.25);
    std::vector<GridLine> columns;
    const double step = seconds / 8;
    for (int i = 1; i < 8; i++)
        columns.push_back({step * i, i % 2 == 0 ? trimmed_number(step * i, 2) + " s" : ""});
    frame.draw(canvas, columns, {{-1.0, "-1"}, {0.0, "0"}, {1.0, "1"}});
    std::vector<Point> points;
    for (size_t i = 0; i < samples.size(); i++)
        points.push_back(frame.point(seconds * double(i) / NUM_SAMPLES, double(samples[i])));
    const bool is_used = is_controller_used(rows.speed, bytes);
    canvas.clip(area);
    canvas.wave(points, is_used ? theme::PARTS[lfo] : theme::TEXT_DIM, 1.6);
    canvas.unclip();
}

} // namespace tarquil
