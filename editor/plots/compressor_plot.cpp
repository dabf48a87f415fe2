// The gain curve of a band of the master compressor, and the crossovers.

#include "editor/plots/compressor_plot.h"

#include <algorithm>
#include <cmath>

#include "curves/effect_curves.h"
#include "editor/kit/dragged_value.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/families.h"

namespace tarquil {

namespace {

constexpr double QUIETEST = -60.0; // dB
constexpr double LOUDEST = 12.0;
constexpr double METER_WIDTH = 10.0;
constexpr double DEEPEST_ATTENUATION = 24.0; // dB
constexpr int NUM_CROSSOVERS = int(NUM_COMPRESSOR_BANDS) - 1;
constexpr double REACH = 10.0;

} // namespace

void CompressorPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& /*state*/) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    Rect plot_area = area;
    const Rect meter = plot_area.cut_right(METER_WIDTH);
    plot_area.cut_right(6);
    const PlotFrame frame(plot_area, QUIETEST, 0.0, QUIETEST, LOUDEST);
    frame.draw(canvas, decibel_lines(-48, -12, 12), decibel_lines(-48, 0, 12));
    const CompressorCurve curve = band_compressor_curve(bytes, band);
    const auto out_level = [&](double in) { return compressed_decibels(curve, in); };
    std::vector<Point> points;
    for (int in = int(QUIETEST); in <= 0; in++)
        points.push_back(frame.point(in, out_level(in)));
    canvas.clip(plot_area);
    canvas.line(frame.point(QUIETEST, QUIETEST), frame.point(0.0, 0.0), theme::GRID_STRONG, 1);
    const double x = frame.x(to_decibels(double(curve.threshold)));
    canvas.line({x, plot_area.y}, {x, plot_area.bottom()}, theme::OUTLINE, 1);
    const bool is_muted = host.get_model().get_synth().is_band_muted(band);
    const Color color = is_muted ? theme::TEXT_DIM : theme::PARTS[band];
    canvas.polyline(points, color, 2);
    const double level = to_decibels(double(host.get_meters().band_levels[band]));
    if (level > QUIETEST)
        canvas.disc(frame.point(std::min(level, 0.0), out_level(std::min(level, 0.0))), 5,
                    theme::TEXT);
    canvas.unclip();
    canvas.fill(meter, theme::WELL, 2);
    const double attenuation = std::clamp(-to_decibels(double(host.get_meters().band_gains[band])),
                                          0.0, DEEPEST_ATTENUATION);
    canvas.fill({meter.x, meter.y, meter.w, meter.h * attenuation / DEEPEST_ATTENUATION},
                theme::WARM, 2);
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
