// What the user does, as the window tells it.

#pragma once

#include <cstdint>
#include <string>

#include "editor/kit/geometry.h"

namespace tarquil {

// A pointer event, in the editor's own units.
struct PointerEvent {
    double x = 0.0;
    double y = 0.0;
    int button = 1; // 1 left, 2 middle, 3 right
    bool shift = false;
    bool control = false;
    uint32_t time_ms = 0; // of any clock
};

enum class Key {
    CHARACTER,
    ENTER,
    ESCAPE,
    TAB,
    BACKSPACE,
    DEL,
    LEFT,
    RIGHT,
    UP,
    DOWN,
    PAGE_UP,
    PAGE_DOWN,
    HOME,
    END,
};

struct KeyEvent {
    Key key = Key::CHARACTER;
    std::string text; // UTF-8, of CHARACTER
    bool shift = false;
    bool control = false;
};

// What widgets get of a pointer event.
struct Pointer {
    Point at;
    enum class Button { NONE, LEFT, MIDDLE, RIGHT } button = Button::NONE;
    bool shift = false;
    bool control = false;
    bool is_double = false; // the second press of a double click
};

} // namespace tarquil
