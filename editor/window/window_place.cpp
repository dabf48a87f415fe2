// Where a window is on the screen, and whether it has the keyboard.

#include "editor/window/window_place.h"

#include <X11/Xlib.h>

namespace tarquil {

WindowPlace WindowPlaceFinder::find(double scale) const {
    WindowPlace place;
    place.scale = scale;
    if (!connection.is_open())
        return place;
    Display* const display = connection.display;
    Window inside = None;
    XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &place.x, &place.y,
                          &inside);
    Window focused = None;
    int revert = 0;
    XGetInputFocus(display, &focused, &revert);
    place.is_active = focused == window;
    return place;
}

} // namespace tarquil
