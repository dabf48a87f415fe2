// The gain curve of a band of the master compressor, and the crossovers.

#include "editor/plots/compressor_plot.h"

#include <algorithm>
#include <cmath>

#include "common/number_text.h"
#include "curves/effect_curves.h"
#include "editor/kit/dragged_value.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

constexpr double QUIETEST = -60.0; // dB
constexpr double LOUDEST = 12.0;
constexpr double METER_WIDTH = 34.0; // with its scale
constexpr double BAR_WIDTH = 10.0;
constexpr double NUMBER_HEIGHT = 20.0;
constexpr double DEEPEST_ATTENUATION = 24.0; // dB
constexpr double DOT_RADIUS = 5.0;
constexpr int NUM_CROSSOVERS = int(NUM_COMPRESSOR_BANDS) - 1;
constexpr double REACH = 10.0;

} // namespace

PlotFrame CompressorPlot::frame() const {
    return {{area.x, area.y, area.w - METER_WIDTH - 6, area.h}, QUIETEST, 0.0, QUIETEST, LOUDEST};
}

Rect CompressorPlot::meter_area() const {
    return {area.right() - METER_WIDTH, area.y, METER_WIDTH, area.h};
}

double CompressorPlot::gain(UiHost& host) const {
    return std::min(0.0, to_decibels(double(host.get_meters().band_gains[band])));
}

Point CompressorPlot::dot(UiHost& host) const {
    const double level = std::min(0.0, to_decibels(double(host.get_meters().band_levels[band])));
    if (level <= QUIETEST)
        return NOWHERE;
    const CompressorCurve curve = band_compressor_curve(host.get_model().get_state().bytes, band);
    return frame().point(level, compressed_decibels(curve, level));
}

void CompressorPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const PlotFrame plot = frame();
    const Rect& plot_area = plot.get_area();
    plot.draw(canvas, decibel_lines(-48, -12, 12), decibel_lines(-48, 0, 12));
    const CompressorCurve curve = band_compressor_curve(bytes, band);
    std::vector<Point> points;
    for (int in = int(QUIETEST); in <= 0; in++)
        points.push_back(plot.point(in, compressed_decibels(curve, in)));
    canvas.clip(plot_area);
    canvas.line(plot.point(QUIETEST, QUIETEST), plot.point(0.0, 0.0), theme::GRID_STRONG, 1);
    const double x = plot.x(to_decibels(double(curve.threshold)));
    canvas.line({x, plot_area.y}, {x, plot_area.bottom()}, theme::OUTLINE, 1);
    const bool is_muted = host.get_model().get_synth().is_band_muted(band);
    canvas.polyline(points, is_muted ? theme::TEXT_DIM : theme::PARTS[band], 2);
    drawn_dot = dot(host);
    canvas.disc(drawn_dot, DOT_RADIUS, theme::TEXT);
    canvas.unclip();
    drawn_gain = gain(host);
    draw_attenuation(canvas, drawn_gain);
}

void CompressorPlot::draw_attenuation(Canvas& canvas, double decibels) const {
    Rect meter = meter_area();
    const Rect number = meter.cut_bottom(NUMBER_HEIGHT);
    const Rect bar = meter.cut_left(BAR_WIDTH);
    const auto depth = [&](double attenuation) {
        return bar.h * std::min(attenuation, DEEPEST_ATTENUATION) / DEEPEST_ATTENUATION;
    };
    canvas.fill(bar, theme::WELL, 2);
    canvas.fill({bar.x, bar.y, bar.w, depth(-decibels)}, theme::WARM, 2);
    for (const int attenuation : {0, 3, 6, 12, 18, 24}) {
        const double y = bar.y + depth(attenuation);
        canvas.line({bar.right() + 1, y}, {bar.right() + 4, y}, theme::OUTLINE);
        canvas.text({meter.x + 5, std::clamp(y - 6, bar.y - 1, bar.bottom() - 11), meter.w - 5, 12},
                    std::to_string(-attenuation), {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    }
    canvas.text({number.x, number.y + 6, number.w, number.h - 6}, fixed_number(decibels, 1),
                {9.5, decibels < -0.05 ? theme::WARM : theme::TEXT_MUTED, Align::RIGHT});
}

std::vector<Rect> CompressorPlot::moved_areas(UiHost& host) {
    std::vector<Rect> moved = moved_dot(drawn_dot, dot(host), DOT_RADIUS);
    if (gain(host) != drawn_gain) {
        Rect meter = meter_area();
        moved.push_back(meter.cut_bottom(NUMBER_HEIGHT));
        moved.push_back(meter.cut_left(BAR_WIDTH));
    }
    return moved;
}

double CrossoverPlot::place(const ControllerBytes& bytes, int crossover) const {
    const PlotFrame frame = frequency_frame(area, 0.0, 1.0);
    const unsigned number = CROSSOVER_ROWS[crossover];
    return std::clamp(frame.x(controller_quantity(number, bytes[number])), area.x, area.right());
}

void CrossoverPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    const PlotFrame frame = frequency_frame(area, 0.0, 1.0);
    frame.draw(canvas, frequency_lines(), {});
    double left = area.x;
    for (int band = 0; band < int(NUM_COMPRESSOR_BANDS); band++) {
        const double right =
            band < NUM_CROSSOVERS ? std::max(left, place(bytes, band)) : area.right();
        const bool is_muted = model.get_synth().is_band_muted(unsigned(band));
        canvas.fill({left, area.y, right - left, area.h}, theme::PARTS[band], 0,
                    is_muted ? 0.05 : 0.25);
        if (right - left > 44)
            canvas.text({left, area.y + 2, right - left, 18}, "Band " + std::to_string(band + 1),
                        {theme::SMALL, is_muted ? theme::TEXT_DIM : theme::TEXT, Align::CENTER});
        left = right;
    }
    for (int crossover = 0; crossover < NUM_CROSSOVERS; crossover++) {
        const double x = place(bytes, crossover);
        const bool is_lit = state.is_pressed && dragged == crossover;
        canvas.line({x, area.y}, {x, area.bottom()}, is_lit ? theme::TEXT : theme::TEXT_MUTED, 1.5);
        canvas.disc({x, area.center().y + 4}, is_lit ? 6 : 4.5, theme::TEXT);
    }
}

bool CrossoverPlot::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    std::vector<Point> places; // beside the pointer
    places.reserve(NUM_CROSSOVERS);
    for (int i = 0; i < NUM_CROSSOVERS; i++)
        places.push_back({place(model.get_state().bytes, i), pointer.at.y});
    const int nearest = nearest_place(places, pointer.at, REACH);
    if (nearest < 0 || pointer.button != Pointer::Button::LEFT)
        return false;
    const unsigned number = CROSSOVER_ROWS[nearest];
    if (pointer.is_double) {
        model.set_value(number, default_byte(*find_controller(number)));
        return false;
    }
    dragged = nearest;
    model.begin_gesture(find_controller(number)->name);
    dragged_place = place(model.get_state().bytes, nearest);
    last = pointer.at;
    return true;
}

void CrossoverPlot::drag(UiHost& host, const Pointer& pointer) {
    dragged_place += (pointer.at.x - last.x) * drag_speed(pointer);
    last = pointer.at;
    dragged_place = std::clamp(dragged_place, area.x, area.right());
    const PlotFrame frame = frequency_frame(area, 0.0, 1.0);
    const unsigned number = CROSSOVER_ROWS[dragged];
    host.get_model().set_value(number, nearest_value(number, frame.x_value(dragged_place)));
}

void CrossoverPlot::release(UiHost& host) {
    host.get_model().end_gesture();
}

std::vector<unsigned> CrossoverPlot::controllers() const {
    return {std::begin(CROSSOVER_ROWS), std::end(CROSSOVER_ROWS)};
}

} // namespace tarquil
