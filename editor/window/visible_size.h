// How much of a window the windows around it leave to be seen.

#pragma once

#include <cstdint>
#include <optional>

#include "editor/window/x_error_trap.h"

namespace tarquil {

struct VisibleSize {
    int width = 0;
    int height = 0;
    bool is_corner_cut = false; // the upper left one lies outside the next window
};

// In pixels, as if the window were as large as could be, and its upper left corner seen; the
// screen's edges do not count.  Nothing while it is not shown.  Under an XErrorTrap.
std::optional<VisibleSize> find_visible_size(const XConnection& connection, uintptr_t window);

// Moves the window's upper left corner to that of the next one.  Under an XErrorTrap.
void move_to_corner(const XConnection& connection, uintptr_t window);

} // namespace tarquil
