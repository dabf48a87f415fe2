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

void (*display_loss_handler)() = nullptr;

int tell_of_loss(Display* /*display*/) {
    if (display_loss_handler != nullptr)
        display_loss_handler();
    return 0;
}

} // namespace

void on_display_loss(void (*handler)()) {
    display_loss_handler = handler;
    XSetIOErrorHandler(handler != nullptr ? tell_of_loss : nullptr);
}

XConnection::XConnection() : display(XOpenDisplay(nullptr)) {}

XConnection::~XConnection() {
    if (display != nullptr)
        XCloseDisplay(display);
}

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
    const XConnection connection;
    if (connection.display == nullptr)
        return;
    XSetInputFocus(connection.display, Window(window), RevertToPointerRoot, CurrentTime);
    XSync(connection.display, False);
}

bool window_exists(const XConnection& connection, uintptr_t window) {
    XWindowAttributes attributes;
    return connection.is_open() &&
           XGetWindowAttributes(connection.display, Window(window), &attributes) != 0;
}

} // namespace tarquil
