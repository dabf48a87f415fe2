// A list to choose from, with or without a field to search it.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/kit/overlay.h"
#include "editor/kit/text_edit.h"

namespace tarquil {

struct MenuItem {
    std::string text;
    bool is_checked = false;
    bool is_enabled = true;
    std::function<void()> choose;
};

class Menu : public Overlay {
  public:
    // Below `anchor`, or wherever it fits into a window of the editor's size.
    Menu(const Rect& anchor, std::vector<MenuItem> menu_items, bool has_search = false);

    void draw(Canvas& canvas) override;
    void press(const Pointer& pointer) override;
    void move(const Pointer& pointer) override;
    void press_key(const KeyEvent& key) override;
    Spoken spoken() override;
    [[nodiscard]] bool takes_text() const override { return has_search_field; }

  private:
    [[nodiscard]] Rect row_area(size_t row) const;
    [[nodiscard]] size_t row_at(Point point) const;
    void filter();
    void choose(size_t row);
    void place();

    const Rect below;
    const std::vector<MenuItem> items;
    const bool has_search_field;
    TextEdit search;
    std::vector<size_t> rows; // the items that fit the search
    size_t current = NO_ROW;  // index into rows
    double column_width = 0.0;
    Rect area;

    static constexpr size_t NO_ROW = size_t(-1);
};

} // namespace tarquil
