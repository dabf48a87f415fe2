// Where a window is on the screen, and whether it has the keyboard.

#pragma once

#include <cstdint>
#include <string>

#include "editor/access/accessible_object.h"
#include "editor/window/x_error_trap.h"

namespace tarquil {

// Over a connection of its own, under an XErrorTrap.
class WindowPlaceFinder {
  public:
    explicit WindowPlaceFinder(uintptr_t its_window) : window(its_window) {}
    [[nodiscard]] WindowPlace find(double scale) const;
    // What X calls a key with or without Shift, and its name.
    [[nodiscard]] uint32_t symbol_of(uint32_t code, bool is_shifted) const;
    static std::string name_of(uint32_t symbol);

  private:
    const XConnection connection;
    const uintptr_t window;
};

} // namespace tarquil
