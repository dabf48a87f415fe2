// Errors of the X server that must not end the process.

#include "editor/window/x_error_trap.h"

#include <X11/Xlib.h>

namespace tarquil {

namespace {

thread_local int caught = 0;

int count_error(Display* /*display*/, XErrorEvent* /*error*/) {
    caught++;
    return 0;
}

// A connection of its own: those of the host and of the toolkit stay untouched.
class Connection {
  public:
    Connection() : display(XOpenDisplay(nullptr)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        if (display != nullptr)
            XCloseDisplay(display);
    }

    Display* const display;
};

} // namespace

XErrorTrap::XErrorTrap() {
    caught = 0;
    previous = reinterpret_cast<int (*)(void*, void*)>(XSetErrorHandler(count_error));
}

XErrorTrap::~XErrorTrap() {
    XSetErrorHandler(reinterpret_cast<XErrorHandler>(previous));
}

bool XErrorTrap::has_caught() {
    return caught > 0;
}

void focus_window(uintptr_t window) {
    const XErrorTrap trap;
    const Connection connection;
    if (connection.display == nullptr)
        return;
    XSetInputFocus(connection.display, Window(window), RevertToPointerRoot, CurrentTime);
    XSync(connection.display, False);
}

bool has_display() {
    const Connection connection;
    return connection.display != nullptr;
}

bool window_exists(uintptr_t window) {
    const XErrorTrap trap;
    const Connection connection;
    if (connection.display == nullptr)
        return false;
    XWindowAttributes attributes;
    return XGetWindowAttributes(connection.display, Window(window), &attributes) != 0;
}

} // namespace tarquil
