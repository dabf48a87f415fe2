// Whether a slot of modulation multiplies its target by its source.

#include "editor/widgets/multiply_switch.h"

#include "editor/widgets/choice_box.h"
#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

void MultiplySwitch::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const unsigned number = modulation_rows(slot).amount;
    const Rect track{area.x, area.center().y - SWITCH_HEIGHT / 2, SWITCH_WIDTH, SWITCH_HEIGHT};
    draw_switch(canvas, track, bytes[number] == MULTIPLYING_AMOUNT,
                meaning_of(number, bytes).is_used, state.is_hovered);
    if (state.is_focused)
        canvas.frame(area, theme::FOCUS, 4);
}

void MultiplySwitch::toggle(UiHost& host) {
    EditorModel& model = host.get_model();
    const unsigned number = modulation_rows(slot).amount;
    const int now = model.value(number);
    if (now == MULTIPLYING_AMOUNT) {
        const bool is_known = amount != NO_AMOUNT && program == model.get_state().program;
        model.set_value(number, is_known ? amount : FIRST_AMOUNT);
        return;
    }
    amount = now;
    program = model.get_state().program;
    model.set_value(number, MULTIPLYING_AMOUNT);
}

bool MultiplySwitch::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT)
        toggle(host);
    return false;
}

bool MultiplySwitch::press_key(UiHost& host, const KeyEvent& key) {
    const bool is_press = key.key == Key::ENTER || (key.key == Key::CHARACTER && key.text == " ");
    if (is_press)
        toggle(host);
    return is_press;
}

std::string MultiplySwitch::tooltip(UiHost& /*host*/) {
    return std::string(MODULATION_TARGET_NAMES[slot]) +
           " is multiplied by the source, instead of moved by an amount\nHeard from the next note "
           "on";
}

Spoken MultiplySwitch::spoken(UiHost& host) {
    const ControllerBytes& bytes = host.get_model().get_state().bytes;
    const unsigned number = modulation_rows(slot).amount;
    Spoken spoken{SpokenRole::SWITCH, std::string(MODULATION_TARGET_NAMES[slot]) + ": multiply"};
    spoken.help = tooltip(host);
    spoken.is_on = bytes[number] == MULTIPLYING_AMOUNT;
    spoken.is_enabled = meaning_of(number, bytes).is_used;
    spoken.press = [this, &host] { toggle(host); };
    return spoken;
}

} // namespace tarquil
