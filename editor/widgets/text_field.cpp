// A text of the bank that a click opens for typing.

#include "editor/widgets/text_field.h"

#include "editor/widgets/text_entry.h"

namespace tarquil {

void TextField::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const std::string text = read(host.get_model());
    canvas.fill(area, theme::WELL, 3);
    canvas.frame(area,
                 state.is_focused ? theme::FOCUS
                                  : (state.is_hovered ? theme::TEXT_MUTED : theme::OUTLINE),
                 3);
    canvas.text(area.inset(8, 2), text.empty() ? placeholder : text,
                {theme::NORMAL, text.empty() ? theme::TEXT_DIM : theme::TEXT});
}

void TextField::open(UiHost& host) {
    host.open_overlay(std::make_unique<TextEntry>(area, name, read(host.get_model()),
                                                  [this, &host](const std::string& text) {
                                                      write(host.get_model(), text);
                                                      return true;
                                                  }));
}

bool TextField::press(UiHost& host, const Pointer& pointer) {
    if (pointer.button == Pointer::Button::LEFT)
        open(host);
    return false;
}

bool TextField::press_key(UiHost& host, const KeyEvent& key) {
    if (key.key != Key::ENTER)
        return false;
    open(host);
    return true;
}

Spoken TextField::spoken(UiHost& host) {
    Spoken spoken{SpokenRole::FIELD, name};
    spoken.text = read(host.get_model());
    spoken.press = [this, &host] { open(host); };
    spoken.type = [this, &host](const std::string& text) {
        write(host.get_model(), text);
        return true;
    };
    return spoken;
}

} // namespace tarquil
