// An envelope with points to drag.

#include "editor/plots/envelope_plot.h"

#include <algorithm>
#include <cmath>

#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/control_use.h"
#include "softsynth/parameters/controller_display.h"

namespace tarquil {

namespace {

constexpr double NODE_RADIUS = 5.0;
constexpr double REACH = 12.0;

// Each of attack, decay and release has a third of the width, less what the sustain takes, and is
// drawn by its byte, so that 5 ms and 5 s both can be seen; the times stand at the points.
constexpr double SUSTAIN_PART = 0.16;
constexpr double STAGE_PART = (1.0 - SUSTAIN_PART) / 3.0;
constexpr double SHORTEST_PART = 0.004;

double stage_width(const Rect& area, int byte) {
    return area.w * (SHORTEST_PART + (STAGE_PART - SHORTEST_PART) * byte / 127.0);
}

Rect curve_area(const Rect& area) {
    return {area.x + 8, area.y + 12, area.w - 16, area.h - 34};
}

} // namespace

Point EnvelopePlot::node_point(const ControllerBytes& bytes, Node node) const {
    const Rect inside = curve_area(area);
    const double attack = inside.x + stage_width(inside, bytes[rows.attack]);
    if (node == ATTACK)
        return {attack, inside.y};
    const double sustain = controller_quantity(rows.sustain, bytes[rows.sustain]);
    const double decay = attack + stage_width(inside, bytes[rows.decay]);
    if (node == DECAY)
        return {decay, inside.bottom() - sustain * inside.h};
    return {decay + SUSTAIN_PART * inside.w + stage_width(inside, bytes[rows.release]),
            inside.bottom()};
}

EnvelopePlot::Node EnvelopePlot::node_at(const ControllerBytes& bytes, Point at) const {
    return Node(nearest_place(
        {node_point(bytes, ATTACK), node_point(bytes, DECAY), node_point(bytes, RELEASE)}, at,
        REACH));
}

void EnvelopePlot::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const bool is_used = is_controller_used(rows.attack, bytes);
    const Color color = is_used ? theme::PARTS[envelope] : theme::TEXT_DIM;
    const Rect inside = curve_area(area);
    canvas.fill(area, theme::WELL, 4);
    for (const double level : {0.25, 0.5, 0.75, 1.0}) {
        const double y = std::round(inside.bottom() - level * inside.h) + 0.5;
        canvas.line({area.x, y}, {area.right(), y}, theme::GRID);
    }
    const Point attack = node_point(bytes, ATTACK);
    const Point decay = node_point(bytes, DECAY);
    const Point release = node_point(bytes, RELEASE);
    const Point key_up{decay.x + SUSTAIN_PART * inside.w, decay.y};
    const std::vector<Point> points{{inside.x, inside.bottom()}, attack, decay, key_up, release};
    for (const Point& place : {attack, decay, key_up})
        canvas.line({place.x, place.y}, {place.x, area.bottom() - 18}, theme::GRID_STRONG);
    canvas.fill_below(points, inside.bottom(), color, 0.14);
    canvas.polyline(points, color, 1.8);
    const auto time_text = [&](unsigned number, double left, double right) {
        constexpr double NARROWEST = 48.0;
        if (right - left > NARROWEST)
            canvas.text({left, area.bottom() - 17, right - left, 14},
                        controller_display(number, bytes[number]),
                        {theme::SMALL, theme::TEXT_MUTED, Align::CENTER});
    };
    time_text(rows.attack, inside.x, attack.x);
    time_text(rows.decay, attack.x, decay.x);
    time_text(rows.release, key_up.x, release.x);
    canvas.text({key_up.x - SUSTAIN_PART * inside.w,
                 decay.y > inside.y + 16 ? decay.y - 15 : decay.y + 3, SUSTAIN_PART * inside.w, 14},
                controller_display(rows.sustain, bytes[rows.sustain]),
                {theme::SMALL, theme::TEXT_MUTED, Align::CENTER});
    const Node lit = state.is_pressed ? dragged : (state.is_hovered ? hovered : NO_NODE);
    for (const Node node : {ATTACK, DECAY, RELEASE}) {
        const Point place = node_point(bytes, node);
        canvas.disc(place, node == lit ? NODE_RADIUS + 1.5 : NODE_RADIUS, color);
        canvas.disc(place, NODE_RADIUS - 2, node == lit ? theme::TEXT : theme::WELL);
    }
}

bool EnvelopePlot::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    dragged = node_at(bytes, pointer.at);
    if (pointer.button != Pointer::Button::LEFT || dragged == NO_NODE)
        return false;
    const unsigned times[] = {rows.attack, rows.decay, rows.release};
    const unsigned time = times[dragged];
    model.begin_gesture(find_controller(time)->name);
    if (pointer.is_double) {
        model.set_value(time, default_byte(*find_controller(time)));
        if (dragged == DECAY)
            model.set_value(rows.sustain, default_byte(*find_controller(rows.sustain)));
        model.end_gesture();
        return false;
    }
    time_value.start(bytes[time]);
    level_value = controller_quantity(rows.sustain, bytes[rows.sustain]);
    last = pointer.at;
    return true;
}

void EnvelopePlot::drag(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const Rect inside = curve_area(area);
    const double speed = drag_speed(pointer);
    const unsigned times[] = {rows.attack, rows.decay, rows.release};
    model.set_value(times[dragged], time_value.move((pointer.at.x - last.x) * speed * 127.0 /
                                                    (inside.w * STAGE_PART)));
    level_value -= (pointer.at.y - last.y) * speed / inside.h;
    last = pointer.at;
    level_value = std::clamp(level_value, 0.0, 1.0);
    if (dragged == DECAY)
        model.set_value(rows.sustain, int(std::lround(127.0 * std::cbrt(level_value))));
}

void EnvelopePlot::release(UiHost& host) {
    host.get_model().end_gesture();
}

void EnvelopePlot::hover(UiHost& host, Point at) {
    hovered = node_at(host.get_model().get_state().bytes, at);
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
    return "Drag the points: time sideways, sustain up and down";
}

std::vector<unsigned> EnvelopePlot::controllers() const {
    return {rows.attack, rows.decay, rows.sustain, rows.release};
}

} // namespace tarquil
