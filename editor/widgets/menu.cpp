// A list to choose from.

#include "editor/widgets/menu.h"

#include <algorithm>

#include "common/characters.h"
#include "editor/kit/window_size.h"

namespace tarquil {

namespace {

constexpr double MENU_ROW_HEIGHT = 24.0;
constexpr double SEARCH_HEIGHT = 26.0;
constexpr double SEARCH_WIDTH = 260.0;
constexpr double MENU_MARGIN = 5.0;
constexpr double CHARACTER_WIDTH = 6.6; // about, at the normal size
constexpr double MARK_WIDTH = 16.0;
constexpr size_t MAX_ROWS = 26; // in one column

} // namespace

Menu::Menu(const Rect& anchor, std::vector<MenuItem> menu_items, bool has_search)
    : below(anchor), items(std::move(menu_items)), has_search_field(has_search) {
    size_t longest = 8;
    for (const MenuItem& item : items)
        longest = std::max(longest, item.text.size());
    const size_t most = items.size() <= MAX_ROWS ? 40 : 24; // in characters
    column_width = MARK_WIDTH + 12 + CHARACTER_WIDTH * double(std::min(longest, most));
    if (items.size() <= MAX_ROWS)
        column_width = std::max(column_width, below.w - 2 * MENU_MARGIN);
    filter();
    for (size_t i = 0; i < rows.size(); i++) {
        if (items[rows[i]].is_checked)
            current = i;
    }
}

void Menu::place() {
    const double rows_high = double(std::min(rows.size(), MAX_ROWS));
    const size_t num_columns = (rows.size() + MAX_ROWS - 1) / MAX_ROWS;
    const double least = has_search_field ? SEARCH_WIDTH + 4 : 0.0;
    area.w = std::max(double(num_columns) * column_width, least) + 2 * MENU_MARGIN;
    area.h =
        rows_high * MENU_ROW_HEIGHT + 2 * MENU_MARGIN + (has_search_field ? SEARCH_HEIGHT + 4 : 0);
    area.x = std::clamp(below.x, 4.0, std::max(4.0, WINDOW_WIDTH - 4 - area.w));
    area.y = below.bottom() + 2;
    if (area.bottom() > WINDOW_HEIGHT - 4)
        area.y = std::max(4.0, std::min(below.y - 2 - area.h, WINDOW_HEIGHT - 4 - area.h));
}

void Menu::filter() {
    rows.clear();
    const std::string wanted = lower_case(search.get_text());
    for (size_t i = 0; i < items.size(); i++) {
        if (lower_case(items[i].text).find(wanted) != std::string::npos)
            rows.push_back(i);
    }
    current = rows.empty() || wanted.empty() ? NO_ROW : 0;
    place();
}

Rect Menu::row_area(size_t row) const {
    const double top = area.y + MENU_MARGIN + (has_search_field ? SEARCH_HEIGHT + 4 : 0);
    const size_t column = row / MAX_ROWS;
    return {area.x + MENU_MARGIN + double(column) * column_width,
            top + double(row % MAX_ROWS) * MENU_ROW_HEIGHT, column_width, MENU_ROW_HEIGHT};
}

size_t Menu::row_at(Point point) const {
    for (size_t row = 0; row < rows.size(); row++) {
        if (row_area(row).contains(point))
            return row;
    }
    return NO_ROW;
}

void Menu::draw(Canvas& canvas) {
    canvas.fill({area.x + 2, area.y + 3, area.w, area.h}, theme::SHADOW, 5, 0.35);
    canvas.fill(area, theme::CONTROL, 5);
    canvas.frame(area, theme::OUTLINE, 5);
    if (has_search_field) {
        const Rect field{area.x + MENU_MARGIN + 2, area.y + MENU_MARGIN, SEARCH_WIDTH,
                         SEARCH_HEIGHT - 2};
        search.draw(canvas, field, true);
        if (search.get_text().empty())
            canvas.text(field.inset(10, 0), "type to search",
                        {theme::NORMAL, theme::TEXT_DIM, Align::LEFT});
    }
    for (size_t row = 0; row < rows.size(); row++) {
        const MenuItem& item = items[rows[row]];
        const Rect place = row_area(row);
        if (row == current && item.is_enabled)
            canvas.fill(place, theme::ACCENT_DIM, 3);
        if (item.is_checked)
            canvas.disc({place.x + 8, place.center().y}, 2.5, theme::ACCENT);
        canvas.text({place.x + MARK_WIDTH, place.y, place.w - MARK_WIDTH - 4, place.h}, item.text,
                    {theme::NORMAL, item.is_enabled ? theme::TEXT : theme::TEXT_DIM});
    }
}

void Menu::choose(size_t row) {
    const MenuItem& item = items[rows[row]];
    if (!item.is_enabled)
        return;
    finish();
    if (item.choose)
        item.choose();
}

void Menu::press(const Pointer& pointer) {
    const size_t row = row_at(pointer.at);
    if (row != NO_ROW)
        choose(row);
    else if (!area.contains(pointer.at))
        finish();
}

void Menu::move(const Pointer& pointer) {
    const size_t row = row_at(pointer.at);
    if (row != NO_ROW)
        current = row;
}

void Menu::press_key(const KeyEvent& key) {
    const auto step = [&](size_t rows_on, bool forward) {
        if (rows.empty())
            return;
        if (current == NO_ROW)
            current = forward ? 0 : rows.size() - 1;
        else if (forward)
            current = std::min(current + rows_on, rows.size() - 1);
        else
            current = current >= rows_on ? current - rows_on : 0;
    };
    switch (key.key) {
    case Key::ESCAPE:
        finish();
        return;
    case Key::ENTER:
        if (current != NO_ROW)
            choose(current);
        return;
    case Key::DOWN:
        step(1, true);
        return;
    case Key::UP:
        step(1, false);
        return;
    case Key::PAGE_DOWN:
        step(MAX_ROWS, true);
        return;
    case Key::PAGE_UP:
        step(MAX_ROWS, false);
        return;
    default:
        if (has_search_field && search.press_key(key))
            filter();
    }
}

Spoken Menu::spoken() {
    Spoken menu{SpokenRole::MENU, has_search_field ? "Search: " + search.get_text() : "Menu"};
    menu.area = area;
    menu.is_focused = current == NO_ROW;
    for (size_t row = 0; row < rows.size(); row++) {
        const MenuItem& item = items[rows[row]];
        Spoken entry{SpokenRole::MENU_ITEM, item.text};
        entry.area = row_area(row);
        entry.is_enabled = item.is_enabled;
        entry.is_on = item.is_checked;
        entry.is_focused = row == current;
        entry.identity = &item;
        entry.press = [this, row] { choose(row); };
        menu.items.push_back(std::move(entry));
    }
    return menu;
}

} // namespace tarquil
