// One line of text that is being typed.

#include "editor/kit/text_edit.h"

#include <algorithm>

#include "common/characters.h"
#include "common/utf8.h"

namespace tarquil {

namespace {

size_t before(const std::string& text, size_t position) {
    if (position > 0)
        position--;
    while (position > 0 && is_utf8_continuation(text[position]))
        position--;
    return position;
}

size_t behind(const std::string& text, size_t position) {
    if (position < text.size())
        position++;
    while (position < text.size() && is_utf8_continuation(text[position]))
        position++;
    return position;
}

} // namespace

Spoken TextEdit::spoken(std::string name, const Rect& area) const {
    Spoken field{SpokenRole::FIELD, std::move(name)};
    field.text = text;
    field.area = area;
    field.caret = utf8_count(std::string_view(text).substr(0, cursor));
    return field;
}

void TextEdit::replace_selection() {
    if (all_selected) {
        text.clear();
        cursor = 0;
    }
    all_selected = false;
}

void TextEdit::insert(const std::string& bytes) {
    replace_selection();
    if (text.size() + bytes.size() > MAX_LENGTH)
        return;
    text.insert(cursor, bytes);
    cursor += bytes.size();
}

bool TextEdit::press_key(const KeyEvent& key) {
    switch (key.key) {
    case Key::CHARACTER:
        if (key.control && (key.text == "a" || key.text == "A")) {
            all_selected = true;
            return true;
        }
        if (key.control || key.text.empty() || is_control(key.text.front()))
            return false;
        insert(key.text);
        return true;
    case Key::BACKSPACE:
        if (!all_selected) {
            const size_t start = before(text, cursor);
            text.erase(start, cursor - start);
            cursor = start;
        }
        replace_selection();
        return true;
    case Key::DEL:
        if (!all_selected)
            text.erase(cursor, behind(text, cursor) - cursor);
        replace_selection();
        return true;
    case Key::LEFT:
        cursor = all_selected ? 0 : before(text, cursor);
        break;
    case Key::RIGHT:
        cursor = all_selected ? text.size() : behind(text, cursor);
        break;
    case Key::HOME:
        cursor = 0;
        break;
    case Key::END:
        cursor = text.size();
        break;
    default:
        return false;
    }
    all_selected = false;
    return true;
}

void TextEdit::draw(Canvas& canvas, const Rect& area, bool is_active) const {
    canvas.fill(area, theme::WELL, 3);
    canvas.frame(area, is_active ? theme::ACCENT : theme::OUTLINE, 3);
    Rect inside = area.inset(6, 2);
    // The cursor stays in sight: what is left of it moves out.
    const double to_cursor = canvas.text_width(text.substr(0, cursor), theme::NORMAL);
    const double shift = is_active ? std::max(0.0, to_cursor - inside.w + 2) : 0.0;
    canvas.clip(inside);
    const double width = canvas.text_width(text, theme::NORMAL);
    if (is_active && all_selected && !text.empty())
        canvas.fill({inside.x - shift, inside.y + 1, width, inside.h - 2}, theme::ACCENT_DIM);
    Rect wide = inside;
    wide.x -= shift;
    wide.w = is_active ? width + 4 : inside.w;
    canvas.text(wide, text, {});
    if (is_active && !(all_selected && !text.empty())) {
        const double x = inside.x - shift + to_cursor + 0.5;
        canvas.line({x, inside.y + 2}, {x, inside.bottom() - 2}, theme::TEXT, 1.2);
    }
    canvas.unclip();
}

} // namespace tarquil
