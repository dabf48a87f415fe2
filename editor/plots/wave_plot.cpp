// The waveform of one oscillator group as it will sound.

#include "editor/plots/wave_plot.h"

#include <algorithm>
#include <cmath>

#include "curves/wave_shape.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

namespace {

constexpr double NUM_PERIODS = 3.0; // of the chosen note
constexpr double STRIP_HEIGHT = 18.0;
constexpr double LOWEST_RANGE = 1.1;

// An oscillator group by itself, at full level.
ControllerBytes only(const ControllerBytes& bytes, unsigned oscillator) {
    ControllerBytes alone = bytes;
    alone[CTRL_OSC1_OSC2_RING_MODULATOR] = 0;
    alone[CTRL_OSC1_OSC2_MIX] = oscillator == 0 ? 0 : 127;
    alone[CTRL_OSC3_VOLUME] = 0;
    if (oscillator == 2) { // in the place of the first
        alone[CTRL_OSC1_OSC2_MIX] = 0;
        for (const unsigned first : {CTRL_OSC1_TYPE, CTRL_OSC1_COARSE_TUNE, CTRL_OSC1_FINE_TUNE,
                                     CTRL_OSC1_SPREAD, CTRL_OSC1_MULTI_COUNT})
            alone[first] = bytes[first + 2];
    }
    return alone;
}

bool is_wave_the_same(const ControllerBytes& a, const ControllerBytes& b) {
    for (const unsigned first : {CTRL_OSC1_TYPE, CTRL_OSC1_COARSE_TUNE, CTRL_OSC1_FINE_TUNE,
                                 CTRL_OSC1_SPREAD, CTRL_OSC1_MULTI_COUNT}) {
        if (!std::equal(a.begin() + first, a.begin() + first + 3, b.begin() + first))
            return false;
    }
    const unsigned others[] = {CTRL_OSC1_OSC2_MIX, CTRL_OSC3_VOLUME, CTRL_OSC1_OSC2_RING_MODULATOR,
                               CTRL_OSC1_RANDOMIZE_PHASE};
    return std::all_of(std::begin(others), std::end(others),
                       [&](unsigned number) { return a[number] == b[number]; });
}

} // namespace

void WavePlot::compute(EditorSynth& synth, const ControllerBytes& bytes, int note,
                       double num_periods) {
    if (note == computed_note && is_wave_the_same(bytes, computed_bytes))
        return;
    computed_note = note;
    computed_bytes = bytes;
    const double length = num_periods * SAMPLE_RATE / double(note_frequency(float(note)));
    const ControllerBytes shown = oscillator == MIX ? bytes : only(bytes, oscillator);
    samples =
        render_wave_shape(synth.get_waves(), shown, note, uint32_t(length) + 2, WaveCopies::ALL)
            .mix;
}

void WavePlot::draw_copies(Canvas& canvas, const ControllerBytes& bytes, const Rect& strip) const {
    const OscillatorRows rows = oscillator_rows(oscillator);
    const int count = int(controller_quantity(rows.copies, bytes[rows.copies]));
    const double spread = count > 1 ? controller_quantity(rows.spread, bytes[rows.spread]) : 0.0;
    const Rect line_area = strip.inset(8, 3);
    const double middle = line_area.center().x;
    canvas.line({line_area.x, line_area.bottom()}, {line_area.right(), line_area.bottom()},
                theme::GRID_STRONG);
    // The cube root leaves narrow spreads wide enough to see.
    const double width = std::cbrt(spread) * line_area.w / 2;
    const int half = count / 2;
    for (int j = -half; j <= half; j++) {
        const double x = middle + (half > 0 ? width * j / half : 0.0);
        canvas.line({x, line_area.y + (j == 0 ? 0 : 3)}, {x, line_area.bottom()},
                    theme::PARTS[oscillator], j == 0 ? 1.6 : 1.0);
    }
}

void WavePlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const int note = host.get_view_state().plot_note;
    compute(host.get_model().get_synth(), bytes, note, NUM_PERIODS);
    Rect wave_area = area;
    Rect strip{};
    if (oscillator != MIX)
        strip = wave_area.cut_bottom(STRIP_HEIGHT);
    double range = LOWEST_RANGE;
    for (const float sample : samples)
        range = std::max(range, double(std::abs(sample)) * LOWEST_RANGE);
    const double length = NUM_PERIODS * SAMPLE_RATE / double(note_frequency(float(note)));
    const PlotFrame frame(wave_area, 0.0, length, -range, range);
    canvas.fill(area, theme::WELL, 4);
    frame.draw(canvas, {{length / 3, ""}, {2 * length / 3, ""}}, {{0.0, ""}});
    // At most two points a pixel: the highest and the lowest sample of each.
    std::vector<Point> points;
    const auto num_columns = size_t(wave_area.w);
    if (samples.size() < 2 * num_columns) {
        for (size_t i = 0; i < samples.size(); i++)
            points.push_back(frame.point(std::min(double(i), length), double(samples[i])));
    } else {
        for (size_t column = 0; column < num_columns; column++) {
            const auto first = samples.begin() + long(column * samples.size() / num_columns);
            const auto last = samples.begin() + long((column + 1) * samples.size() / num_columns);
            const auto [low, high] = std::minmax_element(first, last);
            const double x = wave_area.x + double(column);
            points.push_back({x, frame.y(double(*low))});
            points.push_back({x, frame.y(double(*high))});
        }
    }
    const bool is_off = oscillator != MIX && bytes[CTRL_OSC1_TYPE + oscillator] == OSC_NONE;
    const Color color = oscillator == MIX ? theme::TEXT : theme::PARTS[oscillator];
    canvas.clip(wave_area);
    canvas.wave(points, is_off ? theme::TEXT_DIM : color, 1.6);
    canvas.unclip();
    if (oscillator != MIX)
        draw_copies(canvas, bytes, strip);
}

} // namespace tarquil
