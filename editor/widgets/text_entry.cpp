// A text field over the page.

#include "editor/widgets/text_entry.h"

namespace tarquil {

TextEntry::TextEntry(const Rect& field, std::string field_name, std::string start,
                     std::function<bool(const std::string& text)> take_text)
    : area(field), name(std::move(field_name)), before(start), edit(std::move(start)),
      take(std::move(take_text)) {}

void TextEntry::draw(Canvas& canvas) {
    edit.draw(canvas, area, true);
    if (is_refused)
        canvas.frame(area, theme::RED, 3, 1.5);
}

void TextEntry::press(const Pointer& pointer) {
    if (area.contains(pointer.at))
        return;
    finish();
    if (edit.get_text() != before)
        take(edit.get_text());
}

void TextEntry::press_key(const KeyEvent& key) {
    if (key.key == Key::ESCAPE) {
        finish();
    } else if (key.key == Key::ENTER || key.key == Key::TAB) {
        is_refused = !take(edit.get_text());
        if (!is_refused)
            finish();
    } else if (edit.press_key(key)) {
        is_refused = false;
    }
}

Spoken TextEntry::spoken() {
    Spoken spoken = edit.spoken(name, area);
    spoken.is_focused = true;
    spoken.type = [this](const std::string& text) {
        edit = TextEdit(text);
        press_key({Key::ENTER, "", false, false});
        return is_done();
    };
    return spoken;
}

} // namespace tarquil
