// Where a window is on the screen, and whether it has the keyboard.

#pragma once

#include <cstdint>

#include "editor/access/accessible_object.h"
#include "editor/window/x_error_trap.h"

namespace tarquil {

// Over a connection of its own, under an XErrorTrap.
class WindowPlaceFinder {
  public:
    explicit WindowPlaceFinder(uintptr_t its_window) : window(its_window) {}
    [[nodiscard]] WindowPlace find(double scale) const;

  private:
    const XConnection connection;
    const uintptr_t window;
};

} // namespace tarquil
