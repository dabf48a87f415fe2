// A horizontal slider with its value behind it.

#include "editor/widgets/slider.h"

#include <algorithm>
#include <cmath>

#include "editor/widgets/knob.h"
#include "softsynth/parameters/control_meaning.h"

namespace tarquil {

namespace {

constexpr double LABEL_WIDTH = 92.0;
constexpr double VALUE_WIDTH = 82.0;
constexpr double NARROW_VALUE_WIDTH = 60.0; // without a label

} // namespace

void draw_slider(Canvas& canvas, const Rect& slot, const SliderLook& look) {
    canvas.fill(slot, theme::WELL, SLIDER_SLOT_HEIGHT / 2);
    canvas.frame(slot.inset(-0.5), theme::OUTLINE, SLIDER_SLOT_HEIGHT / 2);
    canvas.fill(
        {std::min(look.from, look.handle), slot.y, std::abs(look.handle - look.from), slot.h},
        look.is_used ? theme::ACCENT : theme::OUTLINE, SLIDER_SLOT_HEIGHT / 2);
    if (look.has_middle)
        canvas.line({look.from, slot.y - 3}, {look.from, slot.bottom() + 3}, theme::GRID_STRONG, 1);
    canvas.disc({look.handle, slot.center().y}, SLIDER_HANDLE_RADIUS,
                !look.is_used ? theme::OUTLINE : (look.is_bright ? theme::TEXT : theme::THUMB));
}

Rect Slider::slot_area() const {
    Rect slot = area;
    if (label[0] != '\0')
        slot.cut_left(LABEL_WIDTH);
    slot.cut_right(value_area().w);
    return slot.inset(SLIDER_HANDLE_RADIUS, (slot.h - SLIDER_SLOT_HEIGHT) / 2);
}

Rect Slider::value_area() const {
    const double width = label[0] != '\0' ? VALUE_WIDTH : NARROW_VALUE_WIDTH;
    return {area.right() - width, area.y, width, area.h};
}

Rect Slider::entry_area() const {
    const Rect value = value_area();
    return {value.x, value.center().y - 10, value.w, 20};
}

bool Slider::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT && !pointer.is_double &&
        value_area().contains(pointer.at)) {
        open_entry(host);
        return false;
    }
    return ControlWidget::press(host, pointer);
}

void Slider::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    const bool is_used = meaning_of(number, bytes).is_used;
    const bool is_bright = state.is_hovered || state.is_pressed;
    const Rect slot = slot_area();
    if (label[0] != '\0')
        canvas.text({area.x, area.y, LABEL_WIDTH, area.h}, label,
                    {theme::SMALL, is_used ? theme::TEXT_MUTED : theme::TEXT_DIM});
    if (label[0] != '\0')
        draw_note_mark(canvas, {area.x + LABEL_WIDTH - 6, area.center().y + 3});
    const ControllerChoices& range = find_controller(number)->choices;
    const auto x_of = [&](int value) {
        return slot.x + slot.w * double(value - range.first) / (range.last - range.first);
    };
    const bool has_middle = is_bipolar(number);
    draw_slider(canvas, slot,
                {has_middle ? x_of(default_byte(*find_controller(number))) : slot.x,
                 x_of(model.value(number)), has_middle, is_used, is_bright});
    canvas.text(value_area(), shown_text(model, number, model.value(number)),
                {theme::SMALL, is_used ? theme::TEXT : theme::TEXT_DIM, Align::RIGHT});
    if (state.is_focused)
        canvas.frame(area.inset(-3, 0), theme::FOCUS, 4);
}

} // namespace tarquil
