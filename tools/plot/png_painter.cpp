// Drawing into a PNG image.

#include "tools/plot/png_painter.h"

#include <numbers>

#include "common/failure.h"

namespace tarquil {

namespace {

void check(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS)
        throw Failure(STATUS_CANNOT,
                      std::string("the image cannot be drawn: ") + cairo_status_to_string(status));
}

double channel(Color color, unsigned shift) {
    return double((color >> shift) & 0xFFU) / 255;
}

cairo_status_t append(void* closure, const unsigned char* data, unsigned length) {
    static_cast<std::string*>(closure)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

} // namespace

PngPainter::PngPainter(int width, int height)
    : surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height)),
      context(cairo_create(surface.get())) {
    check(cairo_status(context.get()));
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
}

void PngPainter::set_color(Color color) {
    cairo_set_source_rgb(context.get(), channel(color, 16), channel(color, 8), channel(color, 0));
}

void PngPainter::fill(const Rectangle& area, Color color) {
    set_color(color);
    cairo_rectangle(context.get(), area.left, area.top, area.width, area.height);
    cairo_fill(context.get());
}

void PngPainter::frame(const Rectangle& area, Color color, double line_width) {
    set_color(color);
    cairo_set_line_width(context.get(), line_width);
    cairo_rectangle(context.get(), area.left, area.top, area.width, area.height);
    cairo_stroke(context.get());
}

void PngPainter::line(const std::vector<PlotPoint>& points, Color color, double line_width) {
    set_color(color);
    cairo_set_line_width(context.get(), line_width);
    cairo_new_path(context.get()); // text leaves a point behind
    for (const PlotPoint& point : points)
        cairo_line_to(context.get(), point.x, point.y);
    cairo_stroke(context.get());
}

void PngPainter::begin_clip(const Rectangle& area) {
    cairo_save(context.get());
    cairo_rectangle(context.get(), area.left, area.top, area.width, area.height);
    cairo_clip(context.get());
}

void PngPainter::end_clip() {
    cairo_restore(context.get());
}

void PngPainter::text(std::string_view text, double x, double y, const TextStyle& style) {
    cairo_t* to = context.get();
    const std::string terminated(text);
    cairo_save(to);
    cairo_select_font_face(to, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           style.is_bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(to, style.size);
    cairo_text_extents_t extents;
    cairo_text_extents(to, terminated.c_str(), &extents);
    const double before = style.align == TextAlign::START    ? 0.0
                          : style.align == TextAlign::MIDDLE ? extents.x_advance / 2
                                                             : extents.x_advance;
    set_color(style.color);
    cairo_translate(to, x, y);
    if (style.is_upright)
        cairo_rotate(to, -std::numbers::pi / 2);
    cairo_move_to(to, -before, 0);
    cairo_show_text(to, terminated.c_str());
    cairo_restore(to);
}

std::string PngPainter::finish() {
    check(cairo_status(context.get()));
    std::string png;
    check(cairo_surface_write_to_png_stream(surface.get(), append, &png));
    return png;
}

} // namespace tarquil
