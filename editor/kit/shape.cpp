// A shape within a box of pixels.

#include "editor/kit/shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace tarquil {

namespace {

constexpr double STEPS = 256.0; // a pixel

enum Place { OUTLINE, WIDTH, HEIGHT, LINE_WIDTH, IS_FINE, NUMBERS };

// Reads a key as it was written.
class ShapeNumbers {
  public:
    explicit ShapeNumbers(const Shape::Key& read_key) : key(read_key) {}
    [[nodiscard]] bool is_at_end() const { return place >= key.size(); }
    double next() { return key[place++] / STEPS; }

  private:
    const Shape::Key& key;
    size_t place = NUMBERS;
};

void trace_rounded(cairo_t* context, ShapeNumbers& numbers) {
    constexpr double HALF_TURN = std::numbers::pi;
    const double left = numbers.next();
    const double top = numbers.next();
    const double width = numbers.next();
    const double height = numbers.next();
    const double radius = std::min({numbers.next(), width / 2, height / 2});
    if (radius <= 0.0) {
        cairo_rectangle(context, left, top, width, height);
        return;
    }
    const double right = left + width;
    const double bottom = top + height;
    cairo_arc(context, right - radius, top + radius, radius, -HALF_TURN / 2, 0);
    cairo_arc(context, right - radius, bottom - radius, radius, 0, HALF_TURN / 2);
    cairo_arc(context, left + radius, bottom - radius, radius, HALF_TURN / 2, HALF_TURN);
    cairo_arc(context, left + radius, top + radius, radius, HALF_TURN, 1.5 * HALF_TURN);
    cairo_close_path(context);
}

void trace_points(cairo_t* context, ShapeNumbers& numbers) {
    while (!numbers.is_at_end()) {
        const double x = numbers.next();
        cairo_line_to(context, x, numbers.next());
    }
}

void trace(cairo_t* context, Outline outline, ShapeNumbers numbers) {
    switch (outline) {
    case Outline::ROUNDED:
        trace_rounded(context, numbers);
        break;
    case Outline::ARC: {
        const double x = numbers.next();
        const double y = numbers.next();
        const double radius = numbers.next();
        const double from = numbers.next();
        cairo_arc(context, x, y, radius, from / Shape::ANGLE, numbers.next() / Shape::ANGLE);
        break;
    }
    case Outline::LINES:
        trace_points(context, numbers);
        // Round joins cost most of a curve of many points.
        cairo_set_line_join(context, CAIRO_LINE_JOIN_BEVEL);
        break;
    case Outline::POLYGON:
        trace_points(context, numbers);
        cairo_close_path(context);
        break;
    case Outline::CURVE: {
        const double from_x = numbers.next();
        const double from_y = numbers.next();
        const double to_x = numbers.next();
        const double to_y = numbers.next();
        const double middle = (from_x + to_x) / 2;
        cairo_move_to(context, from_x, from_y);
        cairo_curve_to(context, middle, from_y, middle, to_y, to_x, to_y);
        break;
    }
    case Outline::BOXES:
        while (!numbers.is_at_end()) {
            const double left = numbers.next();
            const double top = numbers.next();
            const double width = numbers.next();
            cairo_rectangle(context, left, top, width, numbers.next());
        }
        break;
    }
}

} // namespace

void Shape::begin(Outline outline, int width, int height, const Style& style) {
    key.assign({int32_t(outline), width, height, int32_t(std::lround(style.line_width * STEPS)),
                style.is_fine ? 1 : 0});
}

void Shape::add(double number) {
    key.push_back(int32_t(std::floor(number * STEPS + 0.5)));
}

Mask Shape::make_mask(const Key& key) {
    return {key[WIDTH], key[HEIGHT], [&](cairo_t* context) {
                constexpr double CURVE_TOLERANCE = 0.25; // pixels: not seen, and cheaper than
                                                         // cairo's own
                cairo_set_tolerance(context, CURVE_TOLERANCE);
                cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
                cairo_set_antialias(context, key[IS_FINE] != 0 ? CAIRO_ANTIALIAS_DEFAULT
                                                               : CAIRO_ANTIALIAS_FAST);
                trace(context, Outline(key[OUTLINE]), ShapeNumbers(key));
                if (key[LINE_WIDTH] == 0) {
                    cairo_fill(context);
                    return;
                }
                cairo_set_line_width(context, key[LINE_WIDTH] / STEPS);
                cairo_stroke(context);
            }};
}

size_t ShapeHash::operator()(const Shape::Key& key) const {
    return std::hash<std::string_view>()(
        {reinterpret_cast<const char*>(key.data()), key.size() * sizeof(key[0])});
}

} // namespace tarquil
