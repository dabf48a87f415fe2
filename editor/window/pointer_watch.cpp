// Whether the pointer has left a window.

#include "editor/window/pointer_watch.h"

#include <X11/Xlib.h>

namespace tarquil {

PointerWatch::PointerWatch(uintptr_t window) {
    if (!connection.is_open())
        return;
    XSelectInput(connection.display, Window(window), LeaveWindowMask);
    XFlush(connection.display);
}

bool PointerWatch::has_left() {
    bool has_left = false;
    while (connection.is_open() && XPending(connection.display) > 0) {
        XEvent event;
        XNextEvent(connection.display, &event);
        // A button that is held grabs the pointer, which is no way out.
        has_left = has_left || (event.type == LeaveNotify && event.xcrossing.mode == NotifyNormal &&
                                event.xcrossing.detail != NotifyInferior);
    }
    return has_left;
}

} // namespace tarquil
