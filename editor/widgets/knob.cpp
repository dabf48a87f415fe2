// A knob: name, dial and value below each other.

#include "editor/widgets/knob.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "editor/model/modulation_range.h"
#include "editor/plots/plot_frame.h"
#include "softsynth/parameters/control_meaning.h"

namespace tarquil {

namespace {

constexpr double KNOB_LABEL_HEIGHT = 15.0;
constexpr double VALUE_HEIGHT = 15.0;
constexpr double MAX_RADIUS = 19.0;

// Clockwise from the right: the dial runs from bottom left to bottom right.
constexpr double START_ANGLE = 0.75 * std::numbers::pi;
constexpr double SWEEP = 1.5 * std::numbers::pi;

double dial_angle(unsigned number, double value) {
    const ControllerChoices& range = find_controller(number)->choices;
    const double part = (value - range.first) / (range.last - range.first);
    return START_ANGLE + SWEEP * std::clamp(part, 0.0, 1.0);
}

constexpr double RING_WIDTH = 2.0;
constexpr double DOT_RADIUS = 2.5;

} // namespace

bool is_bipolar(unsigned number) {
    const ControllerMapping& mapping = find_controller(number)->mapping;
    return (mapping.exists && mapping.offset < 0.0F) || number == CTRL_PANNING ||
           number == CTRL_PITCH_BEND_MSB;
}

bool Knob::press(UiHost& host, const Pointer& pointer) {
    // A click on the number types a new one.
    const Rect value_area{area.x, area.bottom() - VALUE_HEIGHT, area.w, VALUE_HEIGHT};
    if (pointer.button == Pointer::Button::LEFT && !pointer.is_double &&
        value_area.contains(pointer.at)) {
        if (meaning_of(number, host.get_model().get_state().bytes).choices.empty())
            open_entry(host);
        else
            open_choices(host);
        return false;
    }
    return ControlWidget::press(host, pointer);
}

void Knob::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    const ControlMeaning meaning = meaning_of(number, bytes);
    const bool is_bright = state.is_hovered || state.is_pressed;
    Rect rest = area;
    const Rect top = rest.cut_top(KNOB_LABEL_HEIGHT);
    const Rect bottom = rest.cut_bottom(VALUE_HEIGHT);
    const Color name_color = meaning.is_used ? theme::TEXT_MUTED : theme::TEXT_DIM;
    canvas.text(top, meaning.label[0] != '\0' ? meaning.label : label,
                {theme::SMALL, is_bright ? theme::TEXT : name_color, Align::CENTER});
    draw_note_mark(canvas, {area.x + 4, area.y + KNOB_LABEL_HEIGHT + 9});
    draw_dial(canvas, model.value(number), meaning.is_used ? theme::ACCENT : theme::TEXT_DIM,
              is_bright);
    draw_modulation(canvas, host);
    canvas.text(bottom, shown_text(model, number, model.value(number)),
                {theme::SMALL, meaning.is_used ? theme::TEXT : theme::TEXT_DIM, Align::CENTER});
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void Knob::draw_dial(Canvas& canvas, int value, Color color, bool is_hovered) const {
    const double radius = dial_radius();
    const Point center = dial_center();
    const auto angle_of = [this](double v) { return dial_angle(number, v); };
    const double angle = angle_of(value);
    canvas.arc(center, radius - 1.5, START_ANGLE, START_ANGLE + SWEEP, theme::OUTLINE, 3);
    const double from =
        is_bipolar(number) ? angle_of(default_byte(*find_controller(number))) : START_ANGLE;
    if (std::abs(angle - from) > 0.01)
        canvas.arc(center, radius - 1.5, std::min(from, angle), std::max(from, angle), color, 3);
    canvas.disc(center, radius - 5.5, is_hovered ? theme::HOVER : theme::CONTROL);
    const Point tip{center.x + std::cos(angle) * (radius - 7),
                    center.y + std::sin(angle) * (radius - 7)};
    const Point base{center.x + std::cos(angle) * (radius - 13),
                     center.y + std::sin(angle) * (radius - 13)};
    canvas.line(base, tip, theme::TEXT, 2);
}

Point Knob::dial_center() const {
    Rect dial = area;
    dial.cut_top(KNOB_LABEL_HEIGHT);
    dial.cut_bottom(VALUE_HEIGHT);
    return {dial.center().x, dial.center().y + 1.5};
}

double Knob::dial_radius() const {
    return std::min(MAX_RADIUS, (area.h - KNOB_LABEL_HEIGHT - VALUE_HEIGHT) / 2 - 1);
}

void Knob::draw_modulation(Canvas& canvas, UiHost& host) {
    drawn_dot = NOWHERE;
    const auto range = modulation_range(number, host.get_model().get_state().bytes);
    if (!range)
        return;
    const Color color = theme::PARTS[(range->source - 1) % std::size(theme::PARTS)];
    canvas.arc(dial_center(), dial_radius() + 2, dial_angle(number, range->lowest),
               dial_angle(number, range->highest), color, RING_WIDTH);
    drawn_dot = modulation_dot(host);
    canvas.disc(drawn_dot, DOT_RADIUS, theme::TEXT);
}

Point Knob::modulation_dot(UiHost& host) const {
    const auto byte = modulated_byte(number, host.get_meters().note);
    if (!byte || !modulation_range(number, host.get_model().get_state().bytes))
        return NOWHERE;
    const double angle = dial_angle(number, *byte);
    const double radius = dial_radius() + 2;
    const Point center = dial_center();
    return {center.x + std::cos(angle) * radius, center.y + std::sin(angle) * radius};
}

bool Knob::shows_meters() const {
    return number == CTRL_FILTER1_CUTOFF || number == CTRL_FILTER1_RESONANCE;
}

std::vector<Rect> Knob::moved_areas(UiHost& host) {
    return moved_dot(drawn_dot, modulation_dot(host), DOT_RADIUS);
}

} // namespace tarquil
