// An envelope over time with points to drag, and where the last note is on it.

#include "editor/plots/envelope_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/kit/dragged_value.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/control_use.h"
#include "softsynth/parameters/controller_display.h"

namespace tarquil {

namespace {

constexpr double CORNER_RADIUS = 5.0;
constexpr double NODE_REACH = 12.0;
constexpr double LABELS_WIDTH = 36.0;
constexpr double RELEASED_PART = 0.34; // of the width
constexpr double NARROWEST_TEXT = 48.0;

// The longest time of either side of all envelopes, so that they can be compared.
double longest_seconds(const ControllerBytes& bytes) {
    double longest = 0.01;
    for (unsigned i = 0; i < NUM_ENVELOPES; i++) {
        const EnvelopeRows rows = envelope_rows(i);
        const auto seconds = [&](unsigned number) {
            return controller_quantity(number, bytes[number]) / SAMPLE_RATE;
        };
        longest = std::max(
            {longest, (seconds(rows.attack) + seconds(rows.decay)) * 1.15, seconds(rows.release)});
    }
    return round_time_above(longest);
}

} // namespace

Rect EnvelopePlot::curve_area() const {
    return {area.x + LABELS_WIDTH, area.y + 12, area.w - LABELS_WIDTH - 8, area.h - 34};
}

EnvelopePlot::Axes EnvelopePlot::axes(UiHost& host) const {
    const bool is_logarithmic = host.get_view_state().is_time_logarithmic;
    const double seconds = dragged != NO_NODE && longest > 0.0
                               ? longest
                               : longest_seconds(host.get_model().get_state().bytes);
    Rect held = curve_area();
    const Rect released = held.cut_right(held.w * RELEASED_PART);
    return {EnvelopeAxis(held, is_logarithmic, seconds),
            EnvelopeAxis(released, is_logarithmic, seconds)};
}

double EnvelopePlot::seconds(const ControllerBytes& bytes, unsigned number) const {
    return controller_quantity(number, bytes[number]) / SAMPLE_RATE;
}

double EnvelopePlot::height(double level) const {
    const Rect inside = curve_area();
    return inside.bottom() - level * inside.h;
}

Point EnvelopePlot::node_point(UiHost& host, Node node) const {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const Axes shown = axes(host);
    const double attack = seconds(bytes, rows.attack);
    switch (node) {
    case ATTACK:
        return {shown.held.x(attack), height(1.0)};
    case DECAY:
        return {shown.held.x(attack + seconds(bytes, rows.decay)),
                height(controller_quantity(rows.sustain, bytes[rows.sustain]))};
    case RELEASE:
        return {shown.released.x(seconds(bytes, rows.release)), height(0.0)};
    case NO_NODE:
        break;
    }
    return NOWHERE;
}

EnvelopePlot::Node EnvelopePlot::node_at(UiHost& host, Point at) const {
    return Node(nearest_place(
        {node_point(host, ATTACK), node_point(host, DECAY), node_point(host, RELEASE)}, at,
        NODE_REACH));
}

// Straight in time, so bent where the axis is logarithmic.
std::vector<Point> EnvelopePlot::curve(UiHost& host) const {
    constexpr int PIECES = 24;
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const Axes shown = axes(host);
    const double attack = seconds(bytes, rows.attack);
    const double decay = seconds(bytes, rows.decay);
    const double release = seconds(bytes, rows.release);
    const double sustain = controller_quantity(rows.sustain, bytes[rows.sustain]);
    std::vector<Point> points;
    const auto add = [&](const EnvelopeAxis& axis, double from, double length, double level,
                         double target) {
        const double left = axis.x(from);
        const double right = axis.x(from + length);
        for (int i = 0; i <= PIECES; i++) {
            const double x = left + (right - left) * i / PIECES;
            const double part =
                length > 0.0 ? std::clamp((axis.seconds(x) - from) / length, 0.0, 1.0) : 1.0;
            points.push_back({x, height(level + (target - level) * (i == PIECES ? 1.0 : part))});
        }
    };
    add(shown.held, 0.0, attack, 0.0, 1.0);
    add(shown.held, attack, decay, 1.0, sustain);
    points.push_back({shown.held.get_area().right(), height(sustain)});
    add(shown.released, 0.0, release, sustain, 0.0);
    return points;
}

Point EnvelopePlot::playhead(UiHost& host) const {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const NoteView& note = host.get_meters().note;
    if (note.is_sounding == 0 || !is_controller_used(rows.attack, bytes))
        return NOWHERE;
    const EnvelopePosition& position = note.envelopes[envelope];
    const Axes shown = axes(host);
    const double attack = seconds(bytes, rows.attack);
    const double y = height(double(position.level));
    switch (position.stage) {
    case EnvelopeStage::ATTACK:
        return {shown.held.x(double(position.seconds)), y};
    case EnvelopeStage::DECAY:
        return {shown.held.x(attack + double(position.seconds)), y};
    case EnvelopeStage::SUSTAIN:
        return {shown.held.x(attack + seconds(bytes, rows.decay) + double(position.seconds)), y};
    case EnvelopeStage::RELEASE:
        return {shown.released.x(double(position.seconds)), y};
    case EnvelopeStage::DONE:
        break;
    }
    return NOWHERE;
}

void EnvelopePlot::draw_grid(Canvas& canvas, const Axes& shown) const {
    const Rect inside = curve_area();
    canvas.fill(area, theme::WELL, 4);
    for (const int decibels : {0, -3, -6, -12, -24}) {
        const double y = std::round(height(std::pow(10.0, decibels / 20.0))) + 0.5;
        canvas.line({inside.x, y}, {inside.right(), y}, theme::GRID);
        canvas.text({area.x, y - 7, LABELS_WIDTH - 9, 13},
                    decibels == 0 ? "0 dB" : std::to_string(decibels),
                    {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
    }
    for (const EnvelopeAxis* axis : {&shown.held, &shown.released}) {
        double free_from = axis->get_area().x + 4;
        for (const GridLine& line : axis->lines()) {
            const double x = std::round(axis->x(line.value)) + 0.5;
            const bool is_strong = !line.text.empty();
            canvas.line({x, inside.y}, {x, inside.bottom()},
                        is_strong ? theme::GRID_STRONG : theme::GRID);
            const double width = canvas.text_width(line.text, theme::SMALL) + 6;
            if (!is_strong || x - width / 2 < free_from ||
                x + width / 2 > axis->get_area().right() + 6)
                continue;
            canvas.text({x - 30, inside.bottom() + 5, 60, 14}, line.text,
                        {theme::SMALL, theme::TEXT_MUTED, Align::CENTER});
            free_from = x + width / 2;
        }
    }
    const double key_up = std::round(shown.released.get_area().x) + 0.5;
    canvas.line({key_up, area.y}, {key_up, inside.bottom()}, theme::OUTLINE, 1.5);
    canvas.text({key_up + 5, area.y, 60, 13}, "key up", {theme::SMALL, theme::TEXT_MUTED});
}

void EnvelopePlot::draw_texts(Canvas& canvas, UiHost& host) const {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const Point decay = node_point(host, DECAY);
    const double right = axes(host).held.get_area().right();
    if (right - decay.x > NARROWEST_TEXT)
        canvas.text(
            {decay.x, decay.y > area.y + 30 ? decay.y - 15 : decay.y + 3, right - decay.x, 14},
            controller_display(rows.sustain, bytes[rows.sustain]),
            {9.5, theme::TEXT, Align::CENTER});
}

void EnvelopePlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const bool is_used = is_controller_used(rows.attack, bytes);
    const Color color = is_used ? theme::PARTS[envelope] : theme::TEXT_DIM;
    draw_grid(canvas, axes(host));
    const std::vector<Point> points = curve(host);
    canvas.fill_below(points, height(0.0), color, 0.14);
    canvas.polyline(points, color, 1.8);
    draw_texts(canvas, host);
    const Node lit = state.is_pressed ? dragged : (state.is_hovered ? hovered : NO_NODE);
    for (const Node node : {ATTACK, DECAY, RELEASE}) {
        const Point at = node_point(host, node);
        canvas.disc(at, node == lit ? CORNER_RADIUS + 1.5 : CORNER_RADIUS, color);
        canvas.disc(at, CORNER_RADIUS - 2, node == lit ? theme::TEXT : theme::WELL);
    }
    drawn_playhead = playhead(host);
    canvas.disc(drawn_playhead, CORNER_RADIUS, theme::TEXT);
}

std::vector<Rect> EnvelopePlot::moved_areas(UiHost& host) {
    return moved_dot(drawn_playhead, playhead(host), CORNER_RADIUS);
}

bool EnvelopePlot::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    dragged = NO_NODE;
    const Node node = node_at(host, pointer.at);
    if (pointer.button != Pointer::Button::LEFT || node == NO_NODE)
        return false;
    const ControllerBytes& bytes = model.get_state().bytes;
    const unsigned times[] = {rows.attack, rows.decay, rows.release};
    const unsigned time = times[node];
    model.begin_gesture(find_controller(time)->name);
    if (pointer.is_double) {
        model.set_value(time, default_byte(*find_controller(time)));
        if (node == DECAY)
            model.set_value(rows.sustain, default_byte(*find_controller(rows.sustain)));
        model.end_gesture();
        return false;
    }
    longest = longest_seconds(bytes);
    place = node_point(host, node).x;
    level_value = controller_quantity(rows.sustain, bytes[rows.sustain]);
    dragged = node;
    last = pointer.at;
    return true;
}

void EnvelopePlot::drag(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const double speed = drag_speed(pointer);
    const unsigned times[] = {rows.attack, rows.decay, rows.release};
    const Axes shown = axes(host);
    const EnvelopeAxis& axis = dragged == RELEASE ? shown.released : shown.held;
    if (pointer.at.x != last.x) {
        place = std::clamp(place + (pointer.at.x - last.x) * speed, axis.get_area().x,
                           axis.get_area().right());
        double time = axis.seconds(place);
        if (dragged == DECAY)
            time -= seconds(model.get_state().bytes, rows.attack);
        model.set_value(times[dragged],
                        nearest_value(times[dragged], std::max(time, 0.0) * SAMPLE_RATE));
    }
    if (dragged == DECAY && pointer.at.y != last.y) {
        level_value =
            std::clamp(level_value - (pointer.at.y - last.y) * speed / curve_area().h, 0.0, 1.0);
        model.set_value(rows.sustain, int(std::lround(127.0 * std::cbrt(level_value))));
    }
    last = pointer.at;
}

void EnvelopePlot::release(UiHost& host) {
    dragged = NO_NODE;
    host.get_model().end_gesture();
}

void EnvelopePlot::hover(UiHost& host, Point at) {
    hovered = node_at(host, at);
}

std::string EnvelopePlot::tooltip(UiHost& host) {
    EditorModel& model = host.get_model();
    const auto shown = [&](unsigned number) {
        return std::string(find_controller(number)->name) + " " +
               controller_display(number, model.value(number));
    };
    switch (hovered) {
    case ATTACK:
        return shown(rows.attack);
    case DECAY:
        return shown(rows.decay) + "\n" + shown(rows.sustain);
    case RELEASE:
        return shown(rows.release);
    case NO_NODE:
        break;
    }
    return "Drag the points: time sideways, sustain up and down\n"
           "The white dot: where the last note of this program is";
}

std::vector<unsigned> EnvelopePlot::controllers() const {
    return {rows.attack, rows.decay, rows.sustain, rows.release};
}

} // namespace tarquil
