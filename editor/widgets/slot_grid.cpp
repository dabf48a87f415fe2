// The bank's 128 slots.

#include "editor/widgets/slot_grid.h"

#include <algorithm>

#include "instrument/names.h"

namespace tarquil {

namespace {

constexpr unsigned NUM_COLUMNS = 6;
constexpr unsigned NUM_ROWS = 22; // as high as a finger needs

} // namespace

Rect SlotGrid::slot_area(unsigned slot) const {
    const double width = area.w / NUM_COLUMNS;
    const double height = area.h / NUM_ROWS;
    const unsigned column = slot / NUM_ROWS;
    return {area.x + width * column, area.y + height * (slot % NUM_ROWS), width - 4, height - 2};
}

// With the gaps, which belong to the slot before them.
int SlotGrid::slot_at(Point at) const {
    if (!area.contains(at))
        return NO_SLOT;
    const auto column = unsigned((at.x - area.x) / area.w * NUM_COLUMNS);
    const auto row = unsigned((at.y - area.y) / area.h * NUM_ROWS);
    const unsigned slot =
        std::min(column, NUM_COLUMNS - 1) * NUM_ROWS + std::min(row, NUM_ROWS - 1);
    return slot < MAX_INSTRUMENTS ? int(slot) : NO_SLOT;
}

void SlotGrid::draw(Canvas& canvas, UiHost& host, const WidgetState& state) {
    const EditorState& shown = host.get_model().get_state();
    const unsigned selected = host.get_view_state().selected_slot;
    for (unsigned slot = 0; slot < MAX_INSTRUMENTS; slot++) {
        const Rect place = slot_area(slot);
        const bool is_untouched = shown.names[slot] == default_instrument_name(slot);
        if (slot == selected)
            canvas.fill(place, theme::ACCENT_DIM, 3);
        else if (state.is_hovered && int(slot) == hovered)
            canvas.fill(place, theme::HOVER, 3);
        else
            canvas.fill(place, theme::CONTROL, 3, 0.6);
        if (state.is_pressed && int(slot) == target && slot != selected)
            canvas.frame(place, theme::WARM, 3, 2);
        if (slot == shown.program)
            canvas.fill({place.x, place.y, 3, place.h}, theme::WARM, 1);
        std::string number = std::to_string(slot);
        canvas.text({place.x + 4, place.y, 22, place.h}, number,
                    {theme::SMALL, theme::TEXT_MUTED, Align::RIGHT});
        canvas.text({place.x + 29, place.y, place.w - 30, place.h}, shown.names[slot],
                    {theme::SMALL, is_untouched ? theme::TEXT_MUTED : theme::TEXT});
    }
    if (state.is_focused)
        canvas.frame(slot_area(selected), theme::FOCUS, 3);
}

bool SlotGrid::press(UiHost& host, const Pointer& pointer) {
    const int slot = slot_at(pointer.at);
    if (slot == NO_SLOT)
        return false;
    host.get_view_state().selected_slot = unsigned(slot);
    if (pointer.is_double)
        host.get_model().choose_program(unsigned(slot));
    target = slot;
    return pointer.button == Pointer::Button::LEFT && !pointer.is_double;
}

void SlotGrid::drag(UiHost& /*host*/, const Pointer& pointer) {
    target = slot_at(pointer.at);
}

void SlotGrid::release(UiHost& host) {
    unsigned& selected = host.get_view_state().selected_slot;
    if (target == NO_SLOT || unsigned(target) == selected)
        return;
    host.get_model().swap_programs(selected, unsigned(target));
    selected = unsigned(target);
}

void SlotGrid::hover(UiHost& /*host*/, Point at) {
    hovered = slot_at(at);
}

bool SlotGrid::press_key(UiHost& host, const KeyEvent& key) {
    unsigned& selected = host.get_view_state().selected_slot;
    int moved = int(selected);
    switch (key.key) {
    case Key::UP:
        moved--;
        break;
    case Key::DOWN:
        moved++;
        break;
    case Key::LEFT:
        moved -= int(NUM_ROWS);
        break;
    case Key::RIGHT:
        moved += int(NUM_ROWS);
        break;
    case Key::ENTER:
        host.get_model().choose_program(selected);
        return true;
    default:
        return false;
    }
    selected = unsigned(std::clamp(moved, 0, int(MAX_INSTRUMENTS) - 1));
    return true;
}

std::string SlotGrid::tooltip(UiHost& host) {
    if (hovered == NO_SLOT)
        return "";
    return host.get_model().get_state().names[size_t(hovered)] +
           "\nDouble click to play and edit it on channel " +
           std::to_string(host.get_model().channel() + 1) + ", drag to swap";
}

Spoken SlotGrid::spoken(UiHost& host) {
    const EditorState& shown = host.get_model().get_state();
    Spoken list{SpokenRole::LIST, "Programs of the bank"};
    for (unsigned slot = 0; slot < MAX_INSTRUMENTS; slot++) {
        Spoken item{SpokenRole::ITEM, std::to_string(slot) + " " + shown.names[slot]};
        item.area = slot_area(slot);
        item.is_on = slot == host.get_view_state().selected_slot;
        item.press = [&host, slot] { host.get_view_state().selected_slot = slot; };
        list.items.push_back(std::move(item));
    }
    return list;
}

} // namespace tarquil
