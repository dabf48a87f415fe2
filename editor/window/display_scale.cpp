// What the display says about sizes.

#include "editor/window/display_scale.h"

#include <X11/Xlib.h>

#include <algorithm>
#include <cstdlib>

#include "common/number_text.h"
#include "editor/kit/window_size.h"
#include "editor/window/x_error_trap.h"

namespace tarquil {

namespace {

// What a frame around the window and a panel of the desktop take, about.
constexpr int BORDER_WIDTH = 8;
constexpr int BORDER_HEIGHT = 64;

constexpr double USUAL_DPI = 96.0;

double number_between(const char* text, double least, double most) {
    const double number = text != nullptr ? text_to_number(text) : 0.0;
    return number >= least && number <= most ? number : 0.0;
}

} // namespace

double scale_of_dpi(const char* dpi) {
    return number_between(dpi, USUAL_DPI / 2, USUAL_DPI * 8) / USUAL_DPI;
}

double scale_of_factor(const char* factor) {
    return number_between(factor, 0.5, 8.0);
}

DisplayScale read_display_scale(double height) {
    DisplayScale scale;
    const XErrorTrap trap;
    const XConnection connection;
    if (!connection.is_open())
        return scale;
    const double by_dpi = scale_of_dpi(XGetDefault(connection.display, "Xft", "dpi"));
    const double by_factor = scale_of_factor(std::getenv("GDK_SCALE"));
    if (by_dpi > 0.0)
        scale.usual = by_dpi;
    else if (by_factor > 0.0)
        scale.usual = by_factor;
    const int screen = DefaultScreen(connection.display);
    scale.largest =
        std::min((DisplayWidth(connection.display, screen) - BORDER_WIDTH) / WINDOW_WIDTH,
                 (DisplayHeight(connection.display, screen) - BORDER_HEIGHT) / height);
    return scale;
}

} // namespace tarquil
