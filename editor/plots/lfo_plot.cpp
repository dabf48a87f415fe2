// An LFO over the first seconds of a note.

#include "editor/plots/lfo_plot.h"

#include <algorithm>
#include <memory>

#include "common/number_text.h"
#include "editor/model/control_meaning.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/voices/influence.h"
#include "softsynth/wavetables/oscillator.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_SAMPLES = 512;
constexpr double FEWEST_PERIODS = 2.0; // shown
constexpr double SHORTEST_SECONDS = 2.0;

} // namespace

// Each sample of the drawing stands for a longer piece of time than one of the engine's, so the
// oscillator runs that much faster.
void LfoPlot::compute(EditorSynth& synth, const ControllerBytes& bytes, double seconds) {
    const std::vector<int> from{bytes[CTRL_LFO1_TYPE + lfo], bytes[CTRL_LFO1_SPEED + lfo],
                                bytes[CTRL_LFO1_PHASE + lfo]};
    if (from == computed_from)
        return;
    computed_from = from;
    Oscillator oscillator;
    oscillator.init(synth.get_waves(), OscType(from[0]), 1.0F,
                    map_char_to_float(CTRL_LFO1_PHASE + lfo, from[2]));
    const auto pitch = std::make_unique<MonoBuffer>();
    const auto out = std::make_unique<MonoBuffer>();
    pitch->init(NUM_SAMPLES);
    out->init(NUM_SAMPLES);
    const double hertz = controller_quantity(CTRL_LFO1_SPEED + lfo, from[1]);
    std::fill_n(pitch->get_first_sample_ptr(), NUM_SAMPLES,
                float(hertz * seconds * SAMPLE_RATE / NUM_SAMPLES));
    oscillator.render_interpolated(*out, *pitch, 0);
    samples.assign(out->get_first_sample_ptr(), out->get_first_sample_ptr() + NUM_SAMPLES);
}

void LfoPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const double hertz = controller_quantity(CTRL_LFO1_SPEED + lfo, bytes[CTRL_LFO1_SPEED + lfo]);
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
    const bool is_used = meaning_of(CTRL_LFO1_SPEED + lfo, bytes).is_used;
    canvas.clip(area);
    canvas.wave(points, is_used ? theme::PARTS[lfo] : theme::TEXT_DIM, 1.6);
    canvas.unclip();
}

} // namespace tarquil
