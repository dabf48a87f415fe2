// The editor's size in its own units.

#pragma once

namespace tarquil {

// Header, page and the line below; the keyboard lies below that where it is shown.
inline constexpr double WINDOW_WIDTH = 1040.0;
inline constexpr double WINDOW_HEIGHT = 680.0;
inline constexpr double KEYBOARD_HEIGHT = 96.0;
inline constexpr double FULL_HEIGHT = WINDOW_HEIGHT + KEYBOARD_HEIGHT;

} // namespace tarquil
