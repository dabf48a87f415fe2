// A controller that picks one of a list.

#include "editor/widgets/choice_box.h"

#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/control_text.h"

namespace tarquil {

namespace {

constexpr double LABEL_HEIGHT = 15.0;
constexpr double BOX_HEIGHT = 24.0;

} // namespace

Rect ChoiceBox::box_area() const {
    Rect box = area;
    if (label[0] != '\0')
        box.cut_top(LABEL_HEIGHT);
    return {box.x, box.center().y - BOX_HEIGHT / 2, box.w, BOX_HEIGHT};
}

void ChoiceBox::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const ControllerBytes& bytes = model.get_state().bytes;
    const bool is_used = meaning_of(number, bytes).is_used;
    if (label[0] != '\0')
        canvas.text({area.x, area.y, area.w, LABEL_HEIGHT}, label,
                    {theme::SMALL, is_used ? theme::TEXT_MUTED : theme::TEXT_DIM, Align::CENTER});
    if (label[0] != '\0')
        draw_note_mark(canvas, {area.x + 4, area.y + 11});
    const Rect box = box_area();
    canvas.fill(box, state.is_hovered ? theme::HOVER : theme::CONTROL, 4);
    const bool is_on = is_used && model.value(number) != find_controller(number)->choices.first;
    canvas.text(
        {box.x + 9, box.y, box.w - 26, box.h}, control_text(number, model.value(number), bytes),
        {theme::NORMAL, is_on ? theme::TEXT : (is_used ? theme::TEXT_MUTED : theme::TEXT_DIM)});
    const Point arrow{box.right() - 12, box.center().y + 0.5};
    canvas.polygon(
        {{arrow.x - 3.5, arrow.y - 2}, {arrow.x + 3.5, arrow.y - 2}, {arrow.x, arrow.y + 2.5}},
        theme::TEXT_MUTED);
    canvas.frame(box, state.is_focused ? theme::FOCUS : theme::OUTLINE, 4);
}

bool ChoiceBox::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT) {
        open_choices(host);
        return false;
    }
    return ControlWidget::press(host, pointer);
}

Spoken ChoiceBox::spoken(UiHost& host) {
    Spoken spoken = ControlWidget::spoken(host);
    spoken.role = SpokenRole::CHOICE;
    return spoken;
}

void draw_switch(Canvas& canvas, const Rect& track, bool is_on, bool is_used, bool is_hovered) {
    canvas.fill(track,
                is_on && is_used ? theme::ACCENT_DIM : (is_hovered ? theme::HOVER : theme::CONTROL),
                SWITCH_HEIGHT / 2);
    canvas.frame(track, theme::OUTLINE, SWITCH_HEIGHT / 2);
    canvas.disc({is_on ? track.right() - 8 : track.x + 8, track.center().y}, 5.5,
                is_on && is_used ? theme::ACCENT : theme::TEXT_DIM);
}

void SwitchBox::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorModel& model = host.get_model();
    const bool is_used = meaning_of(number, model.get_state().bytes).is_used;
    const bool is_on = model.value(number) != 0;
    const Rect track{area.x, area.center().y - SWITCH_HEIGHT / 2, SWITCH_WIDTH, SWITCH_HEIGHT};
    draw_switch(canvas, track, is_on, is_used, state.is_hovered);
    canvas.text({track.right() + 8, area.y, area.w - 38, area.h}, label,
                {theme::NORMAL, is_used ? theme::TEXT : theme::TEXT_DIM});
    draw_note_mark(canvas, {area.right() - 6, area.center().y + 3});
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void SwitchBox::toggle(UiHost& host) {
    host.get_model().set_value(number, host.get_model().value(number) != 0 ? 0 : 1);
}

bool SwitchBox::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT) {
        toggle(host);
        return false;
    }
    return ControlWidget::press(host, pointer);
}

bool SwitchBox::press_key(UiHost& host, const KeyEvent& key) {
    const bool is_press = key.key == Key::ENTER || (key.key == Key::CHARACTER && key.text == " ");
    if (is_press)
        toggle(host);
    return is_press || ControlWidget::press_key(host, key);
}

Spoken SwitchBox::spoken(UiHost& host) {
    Spoken spoken = ControlWidget::spoken(host);
    spoken.role = SpokenRole::SWITCH;
    spoken.is_on = host.get_model().value(number) != 0;
    return spoken;
}

} // namespace tarquil
