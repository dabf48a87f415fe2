// What the hosts with windows share: the screen, and the words in which they fail.
//
// Behind all other headers: Xlib defines names that others use.

#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <X11/Xlib.h>

namespace tarquil {

inline int fail(const char* what) {
    std::fprintf(stderr, "FAILED %s\n", what);
    return 1;
}

class Screen {
  public:
    Screen() : display(XOpenDisplay(nullptr)) {
        if (display == nullptr)
            std::exit(fail("no X server can be reached"));
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() { XCloseDisplay(display); }

    [[nodiscard]] Display* get_display() const { return display; }
    Atom atom(const char* name) { return XInternAtom(display, name, False); }

    // Sizes and places in pixels.
    Window make_window(int width, int height, int x = 0) {
        const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), x, 0,
                                                  unsigned(width), unsigned(height), 0, 0, 0);
        XMapWindow(display, window);
        XSync(display, False);
        return window;
    }
    std::vector<Window> children(Window window) {
        Window root = 0;
        Window parent = 0;
        Window* found = nullptr;
        unsigned count = 0;
        XSync(display, False);
        std::vector<Window> all;
        if (XQueryTree(display, window, &root, &parent, &found, &count) != 0 && found != nullptr) {
            all.assign(found, found + count);
            XFree(found);
        }
        return all;
    }
    // 0 for one that is gone.
    uint32_t width_of(Window window) {
        XWindowAttributes attributes;
        XSync(display, False);
        return XGetWindowAttributes(display, window, &attributes) == 0 ? 0
                                                                       : uint32_t(attributes.width);
    }
    // As a user's, with the left button.
    void click(Window window, int x, int y) {
        XEvent event{};
        event.xbutton.window = window;
        event.xbutton.root = DefaultRootWindow(display);
        event.xbutton.x = x;
        event.xbutton.y = y;
        event.xbutton.button = Button1;
        event.xbutton.same_screen = True;
        for (const int type : {ButtonPress, ButtonRelease}) {
            event.type = type;
            XSendEvent(display, window, True, NoEventMask, &event);
        }
        XSync(display, False);
    }
    void show(Window window, bool is_shown) {
        if (is_shown)
            XMapWindow(display, window);
        else
            XUnmapWindow(display, window);
        XSync(display, False);
    }
    void destroy(Window window) {
        XDestroyWindow(display, window);
        XSync(display, False);
    }

  private:
    Display* display;
};

} // namespace tarquil
