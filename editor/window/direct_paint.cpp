// Puts parts of a picture on a window past the toolkit.

#include "editor/window/direct_paint.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <cairo-xlib.h>

#include <bit>

namespace tarquil {

namespace {

constexpr int DEPTH = 24;
constexpr int BITS_PER_PIXEL = 32;

bool is_rgb24(const Visual& visual) {
    return visual.red_mask == 0xFF0000 && visual.green_mask == 0x00FF00 &&
           visual.blue_mask == 0x0000FF;
}

} // namespace

DirectPaint::DirectPaint(uintptr_t painted_window) : window(painted_window) {
    XWindowAttributes attributes;
    if (!connection.is_open() ||
        XGetWindowAttributes(connection.display, Window(window), &attributes) == 0 ||
        attributes.depth != DEPTH || !is_rgb24(*attributes.visual))
        return;
    visual = attributes.visual;
    XGCValues values;
    values.graphics_exposures = False;
    context = XCreateGC(connection.display, Window(window), GCGraphicsExposures, &values);
}

DirectPaint::~DirectPaint() {
    if (context != nullptr)
        XFreeGC(connection.display, static_cast<GC>(context));
}

void DirectPaint::follow(cairo_surface_t* whole) {
    ahead = cairo_surface_get_type(whole) == CAIRO_SURFACE_TYPE_XLIB
                ? cairo_xlib_surface_get_display(whole)
                : nullptr;
}

void DirectPaint::flush_whole() {
    if (ahead != nullptr)
        XFlush(static_cast<Display*>(ahead));
}

void DirectPaint::paint(cairo_surface_t* picture, const std::vector<PixelArea>& areas) {
    if (areas.empty())
        return;
    if (ahead != nullptr)
        XSync(static_cast<Display*>(ahead), False);
    ahead = nullptr;
    cairo_surface_flush(picture);
    XImage image{};
    image.width = cairo_image_surface_get_width(picture);
    image.height = cairo_image_surface_get_height(picture);
    image.format = ZPixmap;
    image.data = reinterpret_cast<char*>(cairo_image_surface_get_data(picture));
    image.byte_order = std::endian::native == std::endian::little ? LSBFirst : MSBFirst;
    image.bitmap_unit = image.bitmap_pad = image.bits_per_pixel = BITS_PER_PIXEL;
    image.bitmap_bit_order = image.byte_order;
    image.depth = DEPTH;
    image.bytes_per_line = cairo_image_surface_get_stride(picture);
    const auto* format = static_cast<const Visual*>(visual);
    image.red_mask = format->red_mask;
    image.green_mask = format->green_mask;
    image.blue_mask = format->blue_mask;
    XInitImage(&image);
    for (const PixelArea& area : areas)
        XPutImage(connection.display, Window(window), static_cast<GC>(context), &image, area.x,
                  area.y, area.x, area.y, unsigned(area.width), unsigned(area.height));
    XFlush(connection.display);
}

} // namespace tarquil
