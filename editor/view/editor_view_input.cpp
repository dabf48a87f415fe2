// The whole editor as a picture: the pointer, keys and files that are dropped.

#include "editor/view/editor_view.h"

#include <algorithm>
#include <cmath>

#include "common/characters.h"
#include "editor/pages/file_exchange.h"
#include "editor/view/file_actions.h"
#include "editor/view/section_menu.h"

namespace tarquil {

namespace {

constexpr uint32_t DOUBLE_CLICK_MS = 350;
constexpr double DOUBLE_CLICK_REACH = 5.0; // units

Pointer pointer_of(const PointerEvent& event) {
    Pointer pointer;
    pointer.at = {event.x, event.y};
    switch (event.button) {
    case 1:
        pointer.button = Pointer::Button::LEFT;
        break;
    case 2:
        pointer.button = Pointer::Button::MIDDLE;
        break;
    case 3:
        pointer.button = Pointer::Button::RIGHT;
        break;
    default:
        break;
    }
    pointer.shift = event.shift;
    pointer.control = event.control;
    return pointer;
}

} // namespace

bool EditorView::is_double_click(const PointerEvent& event) {
    const double way = std::hypot(event.x - press_at.x, event.y - press_at.y);
    const bool is_second = was_pressed && event.button == 1 && way < DOUBLE_CLICK_REACH &&
                           event.time_ms - press_time < DOUBLE_CLICK_MS;
    was_pressed = event.button == 1 && !is_second;
    press_time = event.time_ms;
    press_at = {event.x, event.y};
    return is_second;
}

// What gets the pointer instead of the page; null: the page does.
Overlay* EditorView::overlay_at(Point at) {
    if (overlays.empty())
        return nullptr;
    Overlay& top = *overlays.back();
    const bool is_played = settings.shows_keyboard && top.leaves_keyboard() &&
                           (pressed != nullptr || at.y >= WINDOW_HEIGHT);
    return is_played ? nullptr : &top;
}

void EditorView::press(const PointerEvent& event) {
    Pointer pointer = pointer_of(event);
    pointer.is_double = is_double_click(event);
    is_changed = true;
    still_for = 0.0;
    pointer_at = pointer.at;
    status.message.clear();
    if (model.learning()) { // a click anywhere ends it
        model.stop_learning();
        return;
    }
    if (Overlay* const overlay = overlay_at(pointer.at)) {
        overlay->press(pointer);
        drop_finished_overlays();
        return;
    }
    if (pressed != nullptr)
        return;
    Widget* widget = widget_at(pointer.at);
    hovered = widget;
    if (widget == nullptr) {
        press_panel(pointer);
        return;
    }
    if (widget->takes_focus())
        focused = widget;
    if (widget->press(*this, pointer))
        pressed = widget;
}

void EditorView::press_panel(const Pointer& pointer) {
    const Page& page = pages[current_page];
    for (const Panel& panel : page.panels) {
        const Rect button = section_button(page, panel);
        const bool is_right = pointer.button == Pointer::Button::RIGHT;
        if (button.w > 0.0 && (is_right ? panel.area : button).contains(pointer.at))
            open_overlay(make_section_menu(*this, pages, page, panel));
    }
}

void EditorView::move(const PointerEvent& event) {
    const Pointer pointer = pointer_of(event);
    is_changed = true;
    still_for = 0.0;
    pointer_at = pointer.at;
    if (Overlay* const overlay = overlay_at(pointer.at)) {
        hovered = nullptr;
        overlay->move(pointer);
        return;
    }
    if (pressed != nullptr) {
        pressed->drag(*this, pointer);
        return;
    }
    hovered = widget_at(pointer.at);
    if (hovered != nullptr)
        hovered->hover(*this, pointer.at);
}

void EditorView::release(const PointerEvent& event) {
    const Pointer pointer = pointer_of(event);
    if (pointer.button != Pointer::Button::LEFT)
        return;
    if (pressed == nullptr) {
        if (!overlays.empty())
            overlays.back()->release();
        return;
    }
    is_changed = true;
    pressed->release(*this);
    pressed = nullptr;
    hovered = widget_at(pointer.at);
}

void EditorView::wheel(const PointerEvent& event, double steps) {
    const Pointer pointer = pointer_of(event);
    is_changed = true;
    if (Overlay* const overlay = overlay_at(pointer.at)) {
        overlay->wheel(pointer, steps);
        return;
    }
    Widget* widget = widget_at(pointer.at);
    if (widget != nullptr && pressed == nullptr)
        widget->wheel(*this, pointer, steps);
}

void EditorView::leave() {
    if (pressed != nullptr)
        return;
    is_changed = true;
    hovered = nullptr;
    pointer_at = {-1.0, -1.0};
}

void EditorView::move_focus(int steps) {
    std::vector<Widget*> order;
    for (Page* page : shown_pages()) {
        for (const auto& widget : page->widgets) {
            if (widget->takes_focus())
                order.push_back(widget.get());
        }
    }
    const auto found = std::find(order.begin(), order.end(), focused);
    const auto size = int(order.size());
    int index = int(found - order.begin());
    if (found == order.end())
        index = steps > 0 ? -1 : 0;
    focused = order[size_t((index + steps + size) % size)];
}

bool EditorView::key(const KeyEvent& event) {
    if (!overlays.empty()) {
        is_changed = true;
        status.message.clear();
        overlays.back()->press_key(event);
        drop_finished_overlays();
        return true;
    }
    if (!has_keyboard)
        return false;
    if (pressed != nullptr) // a drag goes on
        return true;
    is_changed = is_changed || !status.message.empty();
    status.message.clear();
    // A key that is held to play a note comes again and again.
    const bool is_used = use_key(event);
    is_changed = is_changed || is_used;
    return is_used;
}

bool EditorView::use_key(const KeyEvent& event) {
    if (event.key == Key::ESCAPE && model.learning()) {
        model.stop_learning();
        return true;
    }
    if (event.key == Key::TAB) {
        move_focus(event.shift ? -1 : 1);
        return true;
    }
    return (event.key == Key::CHARACTER && event.control && use_shortcut(event)) ||
           (focused != nullptr && focused->press_key(*this, event));
}

bool EditorView::use_shortcut(const KeyEvent& event) {
    const std::string key = lower_case(event.text);
    if (key == "z" && event.shift)
        model.redo();
    else if (key == "z")
        model.undo();
    else if (key == "s" && event.shift)
        save_document_as(*this);
    else if (key == "s")
        save_document(*this);
    else if (key == "o")
        open_document(*this);
    else if (key == "+" || key == "=")
        choose_scale(next_scale(settings.scale, true, scales.largest));
    else if (key == "-" || key == "_")
        choose_scale(next_scale(settings.scale, false, scales.largest));
    else if (key == "0")
        choose_scale(scales.usual);
    else
        return false;
    return true;
}

bool EditorView::drag_file(Point at) {
    if (!overlays.empty() || pressed != nullptr)
        return false;
    view_state.carried = {"Load", at, channel_at(at)};
    is_changed = true;
    return true;
}

void EditorView::end_file_drag() {
    view_state.carried.reset();
    is_changed = true;
}

void EditorView::drop_files(const std::vector<std::string>& paths, Point at) {
    end_file_drag();
    if (paths.size() == 1)
        load_dropped_file(*this, paths.front(), channel_at(at).value_or(model.channel()));
    else
        show_message("One file at a time can be dropped", MessageKind::FAILED);
}

void EditorView::press_computer_key(uint32_t code, uint32_t character) {
    if (!wants_keys() && hands.plays_computer_keys())
        is_changed = hands.computer_keys().press(code, character, hands.channel()) || is_changed;
}

void EditorView::release_computer_key(uint32_t code) {
    hands.computer_keys().release(code);
}

} // namespace tarquil
