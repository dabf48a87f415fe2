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
constexpr double SLOT_HEIGHT = 5.0;
constexpr double HANDLE_RADIUS = 6.0;

} // namespace

Rect Slider::slot_area() const {
    Rect slot = area;
    if (label[0] != '\0')
        slot.cut_left(LABEL_WIDTH);
    slot.cut_right(value_area().w);
    return slot.inset(HANDLE_RADIUS, (slot.h - SLOT_HEIGHT) / 2);
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
    const auto place = [&](int value) {
        return slot.x + slot.w * double(value - range.first) / (range.last - range.first);
    };
    const double x = place(model.value(number));
    const double from = is_bipolar(number) ? place(default_byte(*find_controller(number))) : slot.x;
    canvas.fill(slot, theme::WELL, SLOT_HEIGHT / 2);
    canvas.frame(slot.inset(-0.5), theme::OUTLINE, SLOT_HEIGHT / 2);
    canvas.fill({std::min(from, x), slot.y, std::abs(x - from), slot.h},
                is_used ? theme::ACCENT : theme::OUTLINE, SLOT_HEIGHT / 2);
    if (is_bipolar(number))
        canvas.line({from, slot.y - 3}, {from, slot.bottom() + 3}, theme::GRID_STRONG, 1);
    canvas.disc({x, slot.center().y}, HANDLE_RADIUS,
                !is_used ? theme::OUTLINE : (is_bright ? theme::TEXT : theme::THUMB));
    canvas.text(value_area(), shown_text(model, number, model.value(number)),
                {theme::SMALL, is_used ? theme::TEXT : theme::TEXT_DIM, Align::RIGHT});
    if (state.is_focused)
        canvas.frame(area.inset(-3, 0), theme::FOCUS, 4);
}

} // namespace tarquil
