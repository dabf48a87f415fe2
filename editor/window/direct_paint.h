// Puts parts of a picture on a window past the toolkit, which shows windows as a whole.

#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "editor/window/x_error_trap.h"

namespace tarquil {

struct PixelArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// Over a connection of its own; for a window that exists, under an XErrorTrap.
class DirectPaint {
  public:
    explicit DirectPaint(uintptr_t painted_window);
    DirectPaint(const DirectPaint&) = delete;
    DirectPaint& operator=(const DirectPaint&) = delete;
    ~DirectPaint();

    // The window's pixels are those of CAIRO_FORMAT_RGB24.
    [[nodiscard]] bool is_possible() const { return context != nullptr; }

    // The toolkit's connection has sent a whole picture, drawn on that surface: what is painted
    // from now on comes behind it, though the server may take connections in any order.
    void follow(cairo_surface_t* whole);

    // Sends what the toolkit still holds of such a picture.
    void flush_whole();

    // Copies the areas, which lie within the picture, to their places.
    void paint(cairo_surface_t* picture, const std::vector<PixelArea>& areas);

  private:
    const XConnection connection;
    const uintptr_t window;
    void* visual = nullptr;  // Xlib's
    void* context = nullptr; // Xlib's
    void* ahead = nullptr;   // Xlib's display, of a picture that may be on its way
};

} // namespace tarquil
