// A slider for a coarse and a fine controller that are one value.

#include "editor/widgets/pair_slider.h"

#include <algorithm>
#include <cmath>

#include "editor/widgets/slider.h"
#include "softsynth/parameters/control_help.h"
#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

constexpr double PAIR_LABEL_WIDTH = 92.0;
constexpr double PAIR_VALUE_WIDTH = 82.0;
constexpr double PAIR_MIDDLE = 0.5;
constexpr double PAIR_NOTCH = 1.0 / 64; // of the whole way

} // namespace

Rect PairSlider::slot_area() const {
    Rect slot = area;
    if (label[0] != '\0')
        slot.cut_left(PAIR_LABEL_WIDTH);
    slot.cut_right(PAIR_VALUE_WIDTH);
    return slot.inset(SLIDER_HANDLE_RADIUS, (slot.h - SLIDER_SLOT_HEIGHT) / 2);
}

Rect PairSlider::value_area() const {
    return {area.right() - PAIR_VALUE_WIDTH, area.y, PAIR_VALUE_WIDTH, area.h};
}

Rect PairSlider::entry_area() const {
    const Rect value = value_area();
    return {value.x, value.center().y - 10, value.w, 20};
}

PairBytes PairSlider::bytes(const EditorModel& model) const {
    return {model.value(pair.coarse), model.value(pair.fine)};
}

bool PairSlider::multiplies(const EditorModel& model) const {
    return is_multiplying(pair.coarse, model.value(pair.coarse));
}

double PairSlider::quantity_at(double part) const {
    const double way = (std::clamp(part, 0.0, 1.0) - PAIR_MIDDLE) / PAIR_MIDDLE;
    return std::copysign(way * way, way) * largest_pair_quantity(pair);
}

double PairSlider::place(const EditorModel& model) const {
    const double part = pair_quantity(pair, bytes(model)) / largest_pair_quantity(pair);
    return PAIR_MIDDLE +
           PAIR_MIDDLE * std::copysign(std::sqrt(std::min(1.0, std::abs(part))), part);
}

void PairSlider::set(EditorModel& model, double quantity) const {
    const PairBytes wanted = nearest_pair(pair, quantity);
    model.set_values({{pair.coarse, wanted.coarse}, {pair.fine, wanted.fine}});
}

void PairSlider::set_place(EditorModel& model, double part) {
    set(model, quantity_at(part));
}

void PairSlider::reset(EditorModel& model) {
    set(model, 0.0);
}

// By so many parts of the way, at least by the least that changes anything.
void PairSlider::turn(EditorModel& model, double parts) const {
    const double quantity = pair_quantity(pair, bytes(model));
    const double wanted = quantity_at(place(model) + parts);
    if (nearest_pair(pair, wanted) == nearest_pair(pair, quantity))
        turn_finely(model, parts < 0.0 ? -1 : 1);
    else
        turn_to(model, wanted);
}

// By steps of the fine controller.
void PairSlider::turn_finely(EditorModel& model, int steps) const {
    const double step = pair_quantity(pair, {0, 1}) - pair_quantity(pair, {0, 0});
    turn_to(model, pair_quantity(pair, bytes(model)) + steps * step);
}

void PairSlider::turn_to(EditorModel& model, double quantity) const {
    const PairBytes wanted = nearest_pair(pair, quantity);
    model.turn_values({{pair.coarse, wanted.coarse}, {pair.fine, wanted.fine}});
}

void PairSlider::step(UiHost& host, int steps) {
    if (steps != 0 && !multiplies(host.get_model()))
        turn(host.get_model(), steps * PAIR_NOTCH);
}

void PairSlider::wheel(UiHost& host, const Pointer& pointer, double steps) {
    constexpr double FINE_STEPS = 10.0; // a notch is one where Shift takes a tenth
    EditorModel& model = host.get_model();
    if (multiplies(model))
        return;
    const int whole = wheel_steps.turn(pointer, steps, pointer.shift ? FINE_STEPS : 1.0);
    if (pointer.shift && whole != 0)
        turn_finely(model, whole);
    else if (whole != 0)
        turn(model, whole * PAIR_NOTCH);
}

bool PairSlider::press(UiHost& host, const Pointer& pointer) {
    EditorModel& model = host.get_model();
    const bool is_left = pointer.button == Pointer::Button::LEFT;
    if (is_left && multiplies(model)) {
        host.show_message("It multiplies: switch that off to set an amount");
        return false;
    }
    if (is_left && !pointer.is_double && value_area().contains(pointer.at)) {
        open_entry(host);
        return false;
    }
    dragged_place = place(model);
    last_at = pointer.at;
    return ControlWidget::press(host, pointer);
}

void PairSlider::drag(UiHost& host, const Pointer& pointer) {
    const double way = (pointer.at.x - last_at.x) / slot_area().w * drag_speed(pointer);
    dragged_place = std::clamp(dragged_place + way, 0.0, 1.0);
    last_at = pointer.at;
    set_place(host.get_model(), dragged_place);
}

std::string PairSlider::text_now(const EditorModel& model) const {
    return multiplies(model) ? MULTIPLIES_TEXT : pair_text(pair, pair_quantity(pair, bytes(model)));
}

std::string PairSlider::default_text(const EditorModel& /*model*/) const {
    return pair_text(pair, 0.0);
}

std::string PairSlider::take_text(EditorModel& model, const std::string& text) {
    const std::optional<double> quantity = parse_pair(pair, text, text_now(model));
    if (!quantity)
        return pair_text(pair, -largest_pair_quantity(pair)) + " to " +
               pair_text(pair, largest_pair_quantity(pair));
    set(model, *quantity);
    return "";
}

std::string PairSlider::tooltip(UiHost& host) {
    EditorModel& model = host.get_model();
    const ControllerBytes& shown = model.get_state().bytes;
    std::string text = std::string(find_controller(number)->name) + ": " + text_now(model) + "\n";
    const unsigned slot = pair.coarse - amount_pair(0).coarse;
    if (slot >= NUM_MODULATION_SLOTS) {
        text += control_help(number, shown);
    } else if (const unsigned source = shown[modulation_rows(slot).source];
               source == INFL_NONE || multiplies(model)) {
        text += "How far the source moves it";
    } else {
        const bool is_one_sided = source <= INFL_ENV3 || source == INFL_RESONANCE;
        const double quantity = pair_quantity(pair, bytes(model));
        text += std::string(INFLUENCE_NAMES[source]) +
                (is_one_sided ? " moves it by up to " + pair_text(pair, quantity)
                              : " moves it between " + pair_text(pair, -std::abs(quantity)) +
                                    " and " + pair_text(pair, std::abs(quantity)));
    }
    text += control_remarks(model, number);
    const int parameter = model.get_synth().host_parameter(number);
    if (parameter != 0)
        text += "\nHost parameters " + std::to_string(parameter) + " and " +
                std::to_string(model.get_synth().host_parameter(pair.fine));
    return text;
}

void PairSlider::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const bool is_used = meaning_of(number, model.get_state().bytes).is_used;
    const Rect slot = slot_area();
    if (label[0] != '\0')
        canvas.text({area.x, area.y, PAIR_LABEL_WIDTH, area.h}, label,
                    {theme::SMALL, is_used ? theme::TEXT_MUTED : theme::TEXT_DIM});
    if (!multiplies(model))
        draw_slider(canvas, slot,
                    {slot.center().x, slot.x + slot.w * place(model), true, is_used,
                     state.is_hovered || state.is_pressed});
    canvas.text(value_area(), text_now(model),
                {theme::SMALL, is_used ? theme::TEXT : theme::TEXT_DIM, Align::RIGHT});
    if (state.is_focused)
        canvas.frame(area.inset(-3, 0), theme::FOCUS, 4);
}

} // namespace tarquil
