// What a user does, for tests of what takes keys and the pointer.

#pragma once

#include <initializer_list>
#include <string>

#include "editor/kit/events.h"

namespace tarquil {

template <typename Target> void press_keys(Target& target, std::initializer_list<Key> keys) {
    for (const Key key : keys)
        target.press_key({key, "", false, false});
}

// Each byte by itself, as if typed; not for UTF-8.
template <typename Target> void type_text(Target& target, const std::string& text) {
    for (const char c : text)
        target.press_key({Key::CHARACTER, std::string(1, c), false, false});
}

inline Pointer left_press(Point at, bool is_double = false) {
    return {at, Pointer::Button::LEFT, false, false, is_double};
}

} // namespace tarquil
