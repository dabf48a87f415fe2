// How much of a window the windows around it leave to be seen.

#include "editor/window/visible_size.h"

#include <X11/Xlib.h>

#include <algorithm>
#include <limits>

namespace tarquil {

namespace {

// None for the one below the root, and when it is gone.
Window parent_of(Display* display, Window window) {
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) == 0)
        return None;
    if (children != nullptr)
        XFree(children);
    return parent == root ? Window(None) : parent;
}

} // namespace

std::optional<VisibleSize> find_visible_size(const XConnection& connection, uintptr_t window) {
    if (!connection.is_open())
        return std::nullopt;
    constexpr int MOST = std::numeric_limits<int>::max();
    VisibleSize visible{MOST, MOST, false};
    int left = 0; // of the window, within the one that is looked at
    int top = 0;
    Window inner = Window(window);
    XWindowAttributes attributes;
    if (XGetWindowAttributes(connection.display, inner, &attributes) == 0 ||
        attributes.map_state != IsViewable)
        return std::nullopt;
    visible.is_corner_cut = attributes.x < 0 || attributes.y < 0;
    while (const Window outer = parent_of(connection.display, inner)) {
        left += std::max(attributes.x, 0);
        top += std::max(attributes.y, 0);
        if (XGetWindowAttributes(connection.display, outer, &attributes) == 0)
            return std::nullopt;
        visible.width = std::min(visible.width, attributes.width - left);
        visible.height = std::min(visible.height, attributes.height - top);
        inner = outer;
    }
    return visible.width == MOST ? std::nullopt : std::optional(visible);
}

void move_to_corner(const XConnection& connection, uintptr_t window) {
    XMoveWindow(connection.display, Window(window), 0, 0);
}

} // namespace tarquil
