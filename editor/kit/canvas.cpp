// Drawing in the editor's units.

#include "editor/kit/canvas.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/printable_text.h"
#include "common/utf8.h"

namespace tarquil {

namespace {

constexpr double PI = std::numbers::pi;

double part(uint32_t color, unsigned shift) {
    return double((color >> shift) & 0xFFU) / 255;
}

} // namespace

void pop_character(std::string& text) {
    while (!text.empty() && is_utf8_continuation(text.back()))
        text.pop_back();
    if (!text.empty())
        text.pop_back();
}

Canvas::Canvas(cairo_t* context, ThemeKind theme) : cr(context), palette(palette_of(theme)) {
    cairo_save(cr);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    constexpr double CURVE_TOLERANCE = 0.25; // pixels: not seen, and cheaper than cairo's own
    cairo_set_tolerance(cr, CURVE_TOLERANCE);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_FAST); // sixteen shades, in half the time
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_set_font_options(cr, options);
    cairo_font_options_destroy(options);
}

Canvas::~Canvas() {
    cairo_restore(cr);
}

void Canvas::set_color(Color color, double alpha) {
    const uint32_t rgb = palette[size_t(color)];
    cairo_set_source_rgba(cr, part(rgb, 16), part(rgb, 8), part(rgb, 0), alpha);
}

void Canvas::rounded(const Rect& area, double radius) {
    cairo_new_path(cr);
    if (radius <= 0.0) {
        cairo_rectangle(cr, area.x, area.y, area.w, area.h);
        return;
    }
    const double r = std::min({radius, area.w / 2, area.h / 2});
    cairo_arc(cr, area.right() - r, area.y + r, r, -PI / 2, 0);
    cairo_arc(cr, area.right() - r, area.bottom() - r, r, 0, PI / 2);
    cairo_arc(cr, area.x + r, area.bottom() - r, r, PI / 2, PI);
    cairo_arc(cr, area.x + r, area.y + r, r, PI, 3 * PI / 2);
    cairo_close_path(cr);
}

void Canvas::fill(const Rect& area, Color color, double radius, double alpha) {
    rounded(area, radius);
    set_color(color, alpha);
    cairo_fill(cr);
}

void Canvas::fill_all(const std::vector<Rect>& areas, Color color, double alpha) {
    cairo_new_path(cr);
    for (const Rect& area : areas)
        cairo_rectangle(cr, area.x, area.y, area.w, area.h);
    set_color(color, alpha);
    cairo_fill(cr);
}

void Canvas::frame(const Rect& area, Color color, double radius, double width) {
    rounded(area.inset(width / 2), radius);
    set_color(color);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

void Canvas::disc(Point center, double radius, Color color) {
    cairo_new_path(cr);
    cairo_arc(cr, center.x, center.y, radius, 0, 2 * PI);
    set_color(color);
    cairo_fill(cr);
}

void Canvas::ring(Point center, double radius, Color color, double width) {
    arc(center, radius, 0, 2 * PI, color, width);
}

void Canvas::arc(Point center, double radius, double from, double to, Color color, double width) {
    cairo_new_path(cr);
    cairo_arc(cr, center.x, center.y, radius, from, to);
    set_color(color);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

void Canvas::line(Point from, Point to, Color color, double width) {
    // Level and upright lines are boxes, which are filled several times faster than stroked.
    if (from.x == to.x || from.y == to.y) {
        const double left = std::min(from.x, to.x);
        const double top = std::min(from.y, to.y);
        const bool is_upright = from.x == to.x;
        fill({is_upright ? left - width / 2 : left, is_upright ? top : top - width / 2,
              is_upright ? width : std::abs(to.x - from.x),
              is_upright ? std::abs(to.y - from.y) : width},
             color);
        return;
    }
    cairo_new_path(cr);
    cairo_move_to(cr, from.x, from.y);
    cairo_line_to(cr, to.x, to.y);
    set_color(color);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

void Canvas::polyline(const std::vector<Point>& points, Color color, double width, double alpha) {
    // Steps of sixteen shades show where a curve is nearly level.
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);
    wave(points, color, width, alpha);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_FAST);
}

void Canvas::wave(const std::vector<Point>& points, Color color, double width, double alpha) {
    cairo_new_path(cr);
    for (const Point& point : points)
        cairo_line_to(cr, point.x, point.y);
    set_color(color, alpha);
    cairo_set_line_width(cr, width);
    // Round joins cost most of a curve of many points.
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_BEVEL);
    cairo_stroke(cr);
}

void Canvas::fill_below(const std::vector<Point>& points, double base, Color color, double alpha) {
    if (points.empty())
        return;
    cairo_new_path(cr);
    cairo_move_to(cr, points.front().x, base);
    for (const Point& point : points)
        cairo_line_to(cr, point.x, point.y);
    cairo_line_to(cr, points.back().x, base);
    cairo_close_path(cr);
    set_color(color, alpha);
    cairo_fill(cr);
}

void Canvas::polygon(const std::vector<Point>& points, Color color) {
    cairo_new_path(cr);
    for (const Point& point : points)
        cairo_line_to(cr, point.x, point.y);
    cairo_close_path(cr);
    set_color(color);
    cairo_fill(cr);
}

void Canvas::curve(Point from, Point to, Color color, double width) {
    const double middle = (from.x + to.x) / 2;
    cairo_new_path(cr);
    cairo_move_to(cr, from.x, from.y);
    cairo_curve_to(cr, middle, from.y, middle, to.y, to.x, to.y);
    set_color(color);
    cairo_set_line_width(cr, width);
    cairo_stroke(cr);
}

void Canvas::set_font(double size, Weight weight) {
    cairo_set_font_face(cr, editor_font(weight));
    cairo_set_font_size(cr, std::max(size, theme::SMALL));
}

double Canvas::text_width(std::string_view text, double size, Weight weight) {
    return measure(printable_text(text, text.size()), size, weight);
}

double Canvas::measure(const std::string& printable, double size, Weight weight) {
    set_font(size, weight);
    cairo_text_extents_t extents;
    cairo_text_extents(cr, printable.c_str(), &extents);
    return extents.x_advance;
}

void Canvas::text(const Rect& area, std::string_view text, const TextStyle& style) {
    if (text.empty())
        return;
    // No character is wider than that, on the average: what surely fits need not be measured.
    constexpr double WIDEST = 0.8; // of the size
    // Names come from files, and text that is no UTF-8 would end all drawing.
    constexpr size_t MAX_CHARACTERS = 200;
    std::string shown = printable_text(text, MAX_CHARACTERS);
    double width = WIDEST * style.size * double(shown.size());
    if (style.align == Align::LEFT && width < area.w)
        set_font(style.size, style.weight);
    else
        width = measure(shown, style.size, style.weight);
    constexpr double TOLERANCE = 0.5;
    if (width > area.w + TOLERANCE) {
        std::string kept = shown;
        while (!kept.empty() && width > area.w + TOLERANCE) {
            pop_character(kept);
            shown = kept + "\u2026";
            width = measure(shown, style.size, style.weight);
        }
    }
    double x = area.x;
    if (style.align == Align::CENTER)
        x += (area.w - width) / 2;
    else if (style.align == Align::RIGHT)
        x += area.w - width;
    // The height of a capital letter, so that all text of a row sits on one line.
    constexpr double CAPITAL = 0.73;
    double y = area.y + (area.h + CAPITAL * style.size) / 2;
    // On whole pixels, for even stems.
    cairo_user_to_device(cr, &x, &y);
    x = std::round(x);
    y = std::round(y);
    cairo_device_to_user(cr, &x, &y);
    set_color(style.color);
    cairo_move_to(cr, x, y);
    cairo_show_text(cr, shown.c_str());
    cairo_new_path(cr);
}

void Canvas::clip(const std::vector<Rect>& areas) {
    cairo_save(cr);
    cairo_new_path(cr);
    for (const Rect& area : areas) {
        double left = area.x;
        double top = area.y;
        double right = area.right();
        double bottom = area.bottom();
        cairo_user_to_device(cr, &left, &top);
        cairo_user_to_device(cr, &right, &bottom);
        left = std::floor(left);
        top = std::floor(top);
        right = std::ceil(right);
        bottom = std::ceil(bottom);
        cairo_device_to_user(cr, &left, &top);
        cairo_device_to_user(cr, &right, &bottom);
        cairo_rectangle(cr, left, top, right - left, bottom - top);
    }
    cairo_clip(cr);
}

void Canvas::unclip() {
    cairo_restore(cr);
}

} // namespace tarquil
