// One line of text that is being typed.

#pragma once

#include <string>

#include "editor/kit/canvas.h"
#include "editor/kit/events.h"
#include "editor/kit/spoken.h"

namespace tarquil {

class TextEdit {
  public:
    // All of it is selected: the first character typed replaces it.
    explicit TextEdit(std::string start = "") : text(std::move(start)), cursor(text.size()) {}

    [[nodiscard]] const std::string& get_text() const { return text; }

    // Of a field with this name.
    [[nodiscard]] Spoken spoken(std::string name, const Rect& area) const;

    // False for a key that means nothing here.
    bool press_key(const KeyEvent& key);

    void draw(Canvas& canvas, const Rect& area, bool is_active) const;

    static constexpr size_t MAX_LENGTH = 1000; // bytes

  private:
    void insert(const std::string& bytes);
    void replace_selection();

    std::string text; // UTF-8
    size_t cursor;    // bytes in front of it
    bool all_selected = true;
};

} // namespace tarquil
