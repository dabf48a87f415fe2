// The roles and states of the window's parts in AT-SPI 2's numbers.

#include "editor/access/accessible_role.h"

namespace tarquil {

namespace {

// AtspiStateType
enum State : unsigned {
    ACTIVE = 1,
    CHECKED = 4,
    EDITABLE = 7,
    ENABLED = 8,
    FOCUSABLE = 11,
    FOCUSED = 12,
    MODAL = 16,
    PRESSED = 20,
    SELECTABLE = 22,
    SELECTED = 23,
    SENSITIVE = 24,
    SHOWING = 25,
    SINGLE_LINE = 26,
    VISIBLE = 30,
    CHECKABLE = 41,
};

constexpr uint64_t bit(State state, bool is_on = true) {
    return is_on ? uint64_t(1) << state : 0;
}

} // namespace

AccessibleRole accessible_role(SpokenRole role) {
    switch (role) {
    case SpokenRole::WINDOW:
        return {23, "frame"};
    case SpokenRole::LABEL:
        return {29, "label"};
    case SpokenRole::PICTURE:
        return {27, "image"};
    case SpokenRole::BUTTON:
        return {43, "push button"};
    case SpokenRole::SWITCH:
        return {62, "toggle button"};
    case SpokenRole::CHOICE:
        return {11, "combo box"};
    case SpokenRole::SLIDER:
        return {51, "slider"};
    case SpokenRole::FIELD:
        return {79, "entry"};
    case SpokenRole::TAB:
        return {37, "page tab"};
    case SpokenRole::LIST:
        return {31, "list"};
    case SpokenRole::ITEM:
        return {32, "list item"};
    case SpokenRole::MENU:
        return {33, "menu"};
    case SpokenRole::MENU_ITEM:
        return {35, "menu item"};
    case SpokenRole::DIALOG:
        return {16, "dialog"};
    case SpokenRole::MESSAGE:
        return {101, "notification"};
    case SpokenRole::GROUP:
    case SpokenRole::NONE:
        break;
    }
    return {39, "panel"};
}

uint64_t accessible_program_states() {
    return bit(VISIBLE) | bit(SHOWING);
}

uint64_t accessible_states(const Spoken& spoken, bool has_keyboard) {
    const SpokenRole role = spoken.role;
    const bool is_switch = role == SpokenRole::SWITCH;
    const bool is_chosen = role == SpokenRole::ITEM || role == SpokenRole::TAB;
    // What has no effect now can be set all the same.
    return accessible_program_states() | bit(ENABLED, spoken.is_enabled) |
           bit(SENSITIVE, spoken.is_enabled || spoken.set || spoken.type) |
           bit(FOCUSABLE, spoken.focus || spoken.is_focused) | bit(FOCUSED, spoken.is_focused) |
           bit(EDITABLE, bool(spoken.type)) | bit(SINGLE_LINE, role == SpokenRole::FIELD) |
           bit(MODAL, role == SpokenRole::DIALOG) |
           bit(ACTIVE, role == SpokenRole::WINDOW && has_keyboard) | bit(SELECTABLE, is_chosen) |
           bit(SELECTED, is_chosen && spoken.is_on) | bit(CHECKABLE, is_switch) |
           bit(CHECKED, (is_switch || role == SpokenRole::MENU_ITEM) && spoken.is_on) |
           bit(PRESSED, is_switch && spoken.is_on);
}

} // namespace tarquil
