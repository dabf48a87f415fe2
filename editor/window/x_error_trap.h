// Errors of the X server that must not end the process.

#pragma once

#include <cstdint>

namespace tarquil {

// While it lives, errors of the calling thread's requests are counted instead of handled by the
// process's handler, which would end it.
class XErrorTrap {
  public:
    XErrorTrap();
    XErrorTrap(const XErrorTrap&) = delete;
    XErrorTrap& operator=(const XErrorTrap&) = delete;
    ~XErrorTrap();

    [[nodiscard]] static bool has_caught();

  private:
    int (*previous)(void*, void*);
};

// Gives the keyboard to a window, if it still exists.
void focus_window(uintptr_t window);

// Whether an X server can be reached; without one a window can not be made.
bool has_display();

// Whether the window still exists.
bool window_exists(uintptr_t window);

} // namespace tarquil
