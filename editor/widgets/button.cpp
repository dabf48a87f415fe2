// A button with an action of its own.

#include "editor/widgets/button.h"

#include <algorithm>

#include "common/characters.h"

namespace tarquil {

namespace {

constexpr std::string_view MENU_SIGN = " \u25be";

// Signs alone say nothing.
bool has_words(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const char lower = lower_case(c);
        return lower >= 'a' && lower <= 'z';
    });
}

} // namespace

void Button::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const Look now = look(host);
    Color color = theme::CONTROL;
    if (now.is_lit.value_or(false))
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

Spoken Button::spoken(UiHost& host) {
    const Look now = look(host);
    Spoken spoken = spoken_of_tooltip(help);
    spoken.role = now.is_lit ? SpokenRole::SWITCH : SpokenRole::BUTTON;
    spoken.is_on = now.is_lit.value_or(false);
    spoken.is_enabled = now.is_enabled;
    if (now.text.ends_with(MENU_SIGN)) {
        spoken.text = now.text.substr(0, now.text.size() - MENU_SIGN.size());
        spoken.name = spoken.name.substr(0, spoken.name.find(':'));
    } else if (has_words(now.text) || help.empty()) {
        spoken.name = now.text;
        spoken.help = help;
    }
    // There when it can not be pressed, too: readers ask only once what a part can do.
    spoken.press = [this, &host] {
        if (look(host).is_enabled)
            action(host);
    };
    return spoken;
}

} // namespace tarquil
