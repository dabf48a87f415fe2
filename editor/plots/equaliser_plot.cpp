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
constexpr double REACH = 13.0;
constexpr double FINE = 0.1;

// From a filter's type to its other controllers.
constexpr unsigned CUTOFF = CTRL_CHAN_FILTER1_CUTOFF - CTRL_CHAN_FILTER1_TYPE;
constexpr unsigned RESONANCE = CTRL_CHAN_FILTER1_RESONANCE - CTRL_CHAN_FILTER1_TYPE;
constexpr unsigned GAIN = CTRL_CHAN_FILTER1_GAIN - CTRL_CHAN_FILTER1_TYPE;

bool has_gain(const ControllerBytes& bytes, unsigned type) {
    return bytes[type] >= FILTER_PEAKING_EQ;
}

} // namespace

EqualiserPlot::EqualiserPlot(const Rect& widget_area, unsigned first_type, unsigned count,
                             unsigned first_response)
    : Widget(widget_area), first(first_type), num_filters(int(count)), responses(first_response),
      frame(widget_area, 20.0, 20000.0, -GAIN_RANGE, GAIN_RANGE, true) {}

Point EqualiserPlot::node_point(const ControllerBytes& bytes, int filter) const {
    const unsigned type = type_of(filter);
    const double hertz = controller_quantity(type + CUTOFF, bytes[type + CUTOFF]);
    const double gain =
        has_gain(bytes, type)
            ? 20.0 * std::log10(controller_quantity(type + GAIN, bytes[type + GAIN]))
            : 0.0;
    const Rect inside = area.inset(NODE_RADIUS);
    Point place = frame.point(hertz, gain);
    // Filters set alike stand side by side.
    for (int other = 0; other < filter; other++) {
        const auto controls = bytes.begin() + type_of(other);
        if (std::equal(controls, controls + GAIN + 1, bytes.begin() + type))
            place.x += 2 * NODE_RADIUS + 2;
    }
    return {std::clamp(place.x, inside.x, inside.right()),
            std::clamp(place.y, inside.y, inside.bottom())};
}

int EqualiserPlot::node_at(const ControllerBytes& bytes, Point at) const {
    int nearest = NO_NODE;
    double distance = REACH;
    for (int i = 0; i < num_filters; i++) {
        if (bytes[type_of(i)] == FILTER_NONE)
            continue;
        const Point place = node_point(bytes, i);
        const double d = std::hypot(place.x - at.x, place.y - at.y);
        if (d < distance) {
            nearest = i;
            distance = d;
        }
    }
    return nearest;
}

void EqualiserPlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    frame.draw(canvas, frequency_lines(), decibel_lines(-24, 24, area.h > 200 ? 6 : 12));
    const std::vector<double>& frequencies = response_frequencies();
    Response sum(frequencies.size());
    const int lit = state.is_pressed ? dragged : (state.is_hovered ? hovered : NO_NODE);
    canvas.clip(area);
    const auto points_of = [&](const Response& response) {
        std::vector<Point> points;
        for (size_t i = 0; i < response.size(); i++)
            points.push_back(frame.point(frequencies[i], response[i]));
        return points;
    };
    bool is_any_on = false;
    for (int i = 0; i < num_filters; i++) {
        const FilterSettings filter = equaliser_filter_settings(bytes, type_of(i));
        const Response& response = host.get_responses().get(responses + unsigned(i), filter);
        if (!is_filter_on(filter))
            continue;
        is_any_on = true;
        for (size_t k = 0; k < sum.size(); k++)
            sum[k] += response[k];
        const std::vector<Point> points = points_of(response);
        canvas.fill_below(points, frame.y(0.0), theme::PARTS[i], i == lit ? 0.28 : 0.12);
        canvas.polyline(points, theme::PARTS[i], 1, 0.6);
    }
    canvas.polyline(points_of(sum), is_any_on ? theme::TEXT : theme::TEXT_DIM, 2);
    canvas.unclip();
    for (int i = 0; i < num_filters; i++) {
        if (bytes[type_of(i)] == FILTER_NONE)
            continue;
        const Point place = node_point(bytes, i);
        canvas.disc(place, i == lit ? NODE_RADIUS + 1.5 : NODE_RADIUS, theme::PARTS[i]);
        canvas.text({place.x - 10, place.y - 10, 20, 20}, std::to_string(i + 1),
                    {10, theme::BACKGROUND, Align::CENTER, Weight::BOLD});
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
    const unsigned type = type_of(dragged);
    const unsigned height =
        has_gain(model.get_state().bytes, type) ? type + GAIN : type + RESONANCE;
    model.begin_gesture("Equaliser filter " + std::to_string(dragged + 1));
    if (pointer.is_double) {
        model.set_value(height, default_byte(*find_controller(height)));
        model.end_gesture();
        return false;
    }
    cutoff_value = model.value(type + CUTOFF);
    height_value = model.value(height);
    last = pointer.at;
    return true;
}

void EqualiserPlot::drag(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const unsigned type = type_of(dragged);
    const bool is_gain = has_gain(model.get_state().bytes, type);
    const double speed = pointer.shift ? FINE : 1.0;
    // Ten octaves are 127 steps, and so are 40 dB; the plot shows log2(1000) octaves.
    cutoff_value += (pointer.at.x - last.x) * speed * 12.7 * std::log2(1000.0) / area.w;
    height_value -= (pointer.at.y - last.y) * speed * (is_gain ? 2.0 * GAIN_RANGE / 40.0 : 1.0) *
                    127.0 / area.h;
    last = pointer.at;
    cutoff_value = std::clamp(cutoff_value, 0.0, 127.0);
    height_value = std::clamp(height_value, 0.0, 127.0);
    model.set_value(type + CUTOFF, int(std::lround(cutoff_value)));
    model.set_value(is_gain ? type + GAIN : type + RESONANCE, int(std::lround(height_value)));
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
    const unsigned resonance = type_of(node) + RESONANCE;
    model.set_value(resonance, model.value(resonance) + int(std::lround(2 * steps)));
}

std::string EqualiserPlot::tooltip(UiHost& host) {
    if (hovered == NO_NODE)
        return "";
    EditorModel& model = host.get_model();
    const unsigned type = type_of(hovered);
    std::string text = "Filter " + std::to_string(hovered + 1) + ": " +
                       controller_display(type, model.value(type));
    for (const unsigned part : {CUTOFF, RESONANCE, GAIN}) {
        if (part != GAIN || has_gain(model.get_state().bytes, type))
            text += "\n" + controller_display(type + part, model.value(type + part));
    }
    return text + "\nDrag; the wheel changes the resonance";
}

std::vector<unsigned> EqualiserPlot::controllers() const {
    std::vector<unsigned> numbers;
    for (int i = 0; i < num_filters; i++) {
        for (const unsigned part : {CUTOFF, RESONANCE, GAIN})
            numbers.push_back(type_of(i) + part);
    }
    return numbers;
}

} // namespace tarquil
