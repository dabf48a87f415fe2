// What the user does, as the window tells it.

#pragma once

#include <cstdint>

#include "vst/editor/ui/geometry.h"

struct Pointer {
    Point at;
    enum class Button { NONE, LEFT, RIGHT } button = Button::NONE;
    bool shift = false;
    bool control = false;
    bool is_double = false; // the second press of a double click
};

enum class Key {
    CHARACTER,
    ENTER,
    ESCAPE,
    TAB,
    BACKSPACE,
    DELETE,
    LEFT,
    RIGHT,
    UP,
    DOWN,
    PAGE_UP,
    PAGE_DOWN,
    HOME,
    END,
};

struct KeyPress {
    Key key = Key::CHARACTER;
    uint32_t character = 0; // Unicode, of CHARACTER
    bool shift = false;
    bool control = false;
};
