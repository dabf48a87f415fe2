// Where a window is on the screen, and whether it has the keyboard.

#include "editor/window/window_place.h"

#include <X11/XKBlib.h>

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

uint32_t WindowPlaceFinder::symbol_of(uint32_t code, bool is_shifted) const {
    return connection.is_open() ? uint32_t(XkbKeycodeToKeysym(connection.display, KeyCode(code), 0,
                                                              is_shifted ? 1 : 0))
                                : 0;
}

std::string WindowPlaceFinder::name_of(uint32_t symbol) {
    const char* const name = XKeysymToString(symbol);
    return name != nullptr ? name : "";
}

} // namespace tarquil
