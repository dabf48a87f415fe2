// The combined response of a row of equaliser filters.

#include "editor/plots/equaliser_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/plots/response_worker.h"
#include "softsynth/parameters/controller_display.h"

namespace tarquil {

namespace {

constexpr double GAIN_RANGE = 27.0; // dB either way
constexpr double NODE_RADIUS = 8.0;
constexpr double BAND_REACH = 13.0;
// Beside the curve, so that no node covers them.
constexpr double NUMBERS_WIDTH = 36.0;
constexpr double NUMBERS_HEIGHT = 15.0;

bool has_gain(const ControllerBytes& bytes, const FilterRows& rows) {
    return has_filter_gain(FilterType(bytes[rows.type]));
}

} // namespace

EqualiserPlot::EqualiserPlot(const Rect& widget_area, unsigned first_type, unsigned count,
                             unsigned first_response)
    : Widget(widget_area), first(first_type), num_filters(int(count)), responses(first_response),
      frame(frequency_frame({widget_area.x + NUMBERS_WIDTH, widget_area.y,
                             widget_area.w - NUMBERS_WIDTH, widget_area.h - NUMBERS_HEIGHT},
                            -GAIN_RANGE, GAIN_RANGE)) {}

Point EqualiserPlot::node_point(const ControllerBytes& bytes, int filter) const {
    const FilterRows rows = rows_of(filter);
    const double hertz = controller_quantity(rows.cutoff, bytes[rows.cutoff]);
    const double gain = has_gain(bytes, rows)
                            ? 20.0 * std::log10(controller_quantity(rows.gain, bytes[rows.gain]))
                            : 0.0;
    const Rect inside = frame.get_area().inset(NODE_RADIUS);
    Point place = frame.point(hertz, gain);
    // Filters set alike stand side by side.
    for (int other = 0; other < filter; other++) {
        const auto controls = bytes.begin() + rows_of(other).type;
        if (std::equal(controls, controls + NUM_FILTER_ROWS, bytes.begin() + rows.type))
            place.x += 2 * NODE_RADIUS + 2;
    }
    return {std::clamp(place.x, inside.x, inside.right()),
            std::clamp(place.y, inside.y, inside.bottom())};
}

int EqualiserPlot::node_at(const ControllerBytes& bytes, Point at) const {
    std::vector<Point> places;
    places.reserve(size_t(num_filters));
    for (int i = 0; i < num_filters; i++)
        places.push_back(bytes[rows_of(i).type] == FILTER_NONE ? NOWHERE : node_point(bytes, i));
    return nearest_place(places, at, BAND_REACH);
}

void EqualiserPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    frame.draw(canvas, frequency_lines(), decibel_lines(-24, 24, area.h > 200 ? 6 : 12),
               PlotFrame::Numbers::OUTSIDE);
    Response sum(response_frequencies().size());
    const int lit = state.is_pressed ? dragged : (state.is_hovered ? hovered : NO_NODE);
    canvas.clip(frame.get_area());
    bool is_any_on = false;
    for (int i = 0; i < num_filters; i++) {
        const FilterSettings filter = equaliser_filter_settings(bytes, rows_of(i));
        const Response& response = host.get_responses().get(responses + unsigned(i), filter);
        if (!is_filter_on(filter))
            continue;
        is_any_on = true;
        for (size_t k = 0; k < sum.size(); k++)
            sum[k] += response[k];
        const std::vector<Point> points = response_points(frame, response);
        canvas.fill_below(points, frame.y(0.0), theme::PARTS[i], i == lit ? 0.28 : 0.12);
        canvas.polyline(points, theme::PARTS[i], 1, 0.6);
    }
    canvas.polyline(response_points(frame, sum), is_any_on ? theme::TEXT : theme::TEXT_DIM, 2);
    canvas.unclip();
    for (int i = 0; i < num_filters; i++) {
        if (bytes[rows_of(i).type] == FILTER_NONE)
            continue;
        const Point place = node_point(bytes, i);
        canvas.disc(place, i == lit ? NODE_RADIUS + 1.5 : NODE_RADIUS, theme::PARTS[i]);
        canvas.text({place.x - 10, place.y - 10, 20, 20}, std::to_string(i + 1),
                    {theme::SMALL, theme::WELL, Align::CENTER, Weight::BOLD});
    }
    if (!is_any_on)
        canvas.text({area.x, area.y, area.w, area.h / 2},
                    "Choose a type below to switch a filter on",
                    {theme::NORMAL, theme::TEXT_MUTED, Align::CENTER});
}

bool EqualiserPlot::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    dragged = node_at(model.get_state().bytes, pointer.at);
    if (pointer.button != Pointer::Button::LEFT || dragged == NO_NODE)
        return false;
    const FilterRows rows = rows_of(dragged);
    const unsigned height = has_gain(model.get_state().bytes, rows) ? rows.gain : rows.resonance;
    model.begin_gesture("Equaliser filter " + std::to_string(dragged + 1));
    if (pointer.is_double) {
        model.set_value(height, default_byte(*find_controller(height)));
        model.end_gesture();
        return false;
    }
    cutoff.start(model.value(rows.cutoff));
    heights.start(model.value(height));
    last = pointer.at;
    return true;
}

void EqualiserPlot::drag(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const FilterRows rows = rows_of(dragged);
    const bool is_gain = has_gain(model.get_state().bytes, rows);
    const double speed = drag_speed(pointer);
    // 40 dB are 127 steps, and so is the height for a resonance.
    const double steps = (is_gain ? 2.0 * GAIN_RANGE / 40.0 : 1.0) * 127.0 / frame.get_area().h;
    model.set_value(rows.cutoff,
                    cutoff.move((pointer.at.x - last.x) * speed * cutoff_steps(frame)));
    model.set_value(is_gain ? rows.gain : rows.resonance,
                    heights.move((last.y - pointer.at.y) * speed * steps));
    last = pointer.at;
}

void EqualiserPlot::release(UiHost& host) {
    host.get_model().end_gesture();
}

void EqualiserPlot::hover(UiHost& host, Point at) {
    hovered = node_at(host.get_model().get_state().bytes, at);
}

void EqualiserPlot::wheel(UiHost& host, const Pointer& pointer, double steps) {
    EditorModel& model = host.get_model();
    const int node = node_at(model.get_state().bytes, pointer.at);
    if (node == NO_NODE)
        return;
    const unsigned resonance = rows_of(node).resonance;
    const int value = model.value(resonance) + wheel_steps.turn(pointer, steps, 2.0);
    if (value != model.value(resonance))
        model.turn_value(resonance, value);
}

std::string EqualiserPlot::tooltip(UiHost& host) {
    if (hovered == NO_NODE)
        return "";
    EditorModel& model = host.get_model();
    const FilterRows rows = rows_of(hovered);
    std::string text = "Filter " + std::to_string(hovered + 1) + ": " +
                       controller_display(rows.type, model.value(rows.type));
    for (const unsigned number : {rows.cutoff, rows.resonance, rows.gain}) {
        if (number != rows.gain || has_gain(model.get_state().bytes, rows))
            text += "\n" + controller_display(number, model.value(number));
    }
    return text + "\nDrag; the wheel changes the resonance";
}

std::vector<unsigned> EqualiserPlot::controllers() const {
    std::vector<unsigned> numbers;
    for (int i = 0; i < num_filters; i++) {
        const FilterRows rows = rows_of(i);
        numbers.insert(numbers.end(), {rows.cutoff, rows.resonance, rows.gain});
    }
    return numbers;
}

} // namespace tarquil
