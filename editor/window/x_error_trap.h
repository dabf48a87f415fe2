// Errors of the X server that must not end the process.

#pragma once

#include <cstdint>

struct _XDisplay; // NOLINT(*-reserved-identifier): Xlib's name

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

// What to do when the connection to the X server is lost, which ends the process right after.  For
// a program that is the process; it must not use the display.
void on_display_loss(void (*handler)());

// Gives the keyboard to a window, if it still exists.
void focus_window(uintptr_t window);

// A connection to the X server of its own: those of the host and of the toolkit stay untouched.
class XConnection {
  public:
    XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;
    ~XConnection();

    // Whether the server was reached; without one a window can not be made.
    [[nodiscard]] bool is_open() const { return display != nullptr; }

    _XDisplay* const display;
};

// Whether the window still exists.  Under an XErrorTrap.
bool window_exists(const XConnection& connection, uintptr_t window);

} // namespace tarquil
