// A button with an action of its own.

#include "editor/widgets/button.h"

namespace tarquil {

void Button::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const Look now = look(host);
    Color color = theme::CONTROL;
    if (now.is_lit)
        color = now.light;
    else if (state.is_hovered && now.is_enabled)
        color = theme::HOVER;
    canvas.fill(area, color, 4);
    canvas.text(area.inset(4, 0), now.text,
                {theme::NORMAL, now.is_enabled ? theme::TEXT : theme::TEXT_DIM, Align::CENTER});
    canvas.frame(area, state.is_focused ? theme::FOCUS : theme::OUTLINE, 4);
}

bool Button::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT && look(host).is_enabled)
        action(host);
    return false;
}

bool Button::press_key(UiHost& host, const KeyEvent& key) {
    const bool is_press = key.key == Key::ENTER || (key.key == Key::CHARACTER && key.text == " ");
    if (is_press && look(host).is_enabled)
        action(host);
    return is_press;
}

} // namespace tarquil
