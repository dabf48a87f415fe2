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

// As much again as the picture itself, for shapes and for texts: several pages' masks.
constexpr size_t STORED_BYTES_PER_PIXEL = 4;

PixelBox whole_pixels(const Rect& area) {
    return {int(std::floor(area.x)), int(std::floor(area.y)), int(std::ceil(area.right())),
            int(std::ceil(area.bottom()))};
}

PixelBox intersection(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
}

} // namespace

void pop_character(std::string& text) {
    while (!text.empty() && is_utf8_continuation(text.back()))
        text.pop_back();
    if (!text.empty())
        text.pop_back();
}

Canvas::Canvas(cairo_t* context, DrawnStore& drawn_store, ThemeKind theme)
    : palette(palette_of(theme)), store(drawn_store), pixels(cairo_get_target(context)) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    scale = matrix.xx;
    const PixelBox all = pixels.bounds();
    const size_t limit = STORED_BYTES_PER_PIXEL * size_t(all.x2) * size_t(all.y2);
    store.shapes.set_limit(limit);
    store.texts.set_limit(limit);
}

Paint Canvas::paint_of(Color color, double alpha) const {
    return {palette[size_t(color)], alpha};
}

Rect Canvas::scaled(const Rect& area) const {
    return {area.x * scale, area.y * scale, area.w * scale, area.h * scale};
}

// False when nothing of it would be seen.
bool Canvas::begin(Outline outline, const Rect& pixels_area, const Shape::Style& style) {
    // What cairo may cover beyond the outline, and the width of the line, with its joins.
    const double margin = style.line_width + 1;
    const PixelBox box = intersection(whole_pixels(pixels_area.inset(-margin)), pixels.bounds());
    if (box.x1 >= box.x2 || box.y1 >= box.y2 || !pixels.shows(box))
        return false;
    shape_left = box.x1;
    shape_top = box.y1;
    shape.begin(outline, box.x2 - box.x1, box.y2 - box.y1, style);
    return true;
}

bool Canvas::begin_points(Outline outline, const std::vector<Point>& points,
                          const Shape::Style& style) {
    if (points.empty())
        return false;
    const auto [left, right] = std::minmax_element(
        points.begin(), points.end(), [](const Point& a, const Point& b) { return a.x < b.x; });
    const auto [top, bottom] = std::minmax_element(
        points.begin(), points.end(), [](const Point& a, const Point& b) { return a.y < b.y; });
    return begin(outline, scaled({left->x, top->y, right->x - left->x, bottom->y - top->y}), style);
}

// A point in pixels.
void Canvas::add(double x, double y) {
    shape.add(x - shape_left);
    shape.add(y - shape_top);
}

void Canvas::finish(const Paint& paint) {
    const Shape::Key& key = shape.get_key();
    const Mask* mask = store.shapes.find(key);
    if (mask == nullptr) {
        Mask made = Shape::make_mask(key);
        const size_t bytes =
            size_t(made.width()) * size_t(made.height()) + key.size() * sizeof(key[0]);
        mask = &store.shapes.add(key, std::move(made), bytes);
    }
    pixels.fill(*mask, shape_left, shape_top, paint);
}

// The outline's corners around which a line of that width runs, or within which all is filled for
// 0.
void Canvas::rounded(const Rect& outline, double radius, double line_width, const Paint& paint) {
    // Of more, most lies between the corners, where boxes are faster.
    constexpr double MOST_PIXELS = 4096;
    if (outline.w * outline.h > MOST_PIXELS && std::min(outline.w, outline.h) > 2 * radius + 4) {
        corners(outline, radius, line_width, paint);
        return;
    }
    if (!begin(Outline::ROUNDED, outline, {line_width, false}))
        return;
    add(outline.x, outline.y);
    shape.add(outline.w);
    shape.add(outline.h);
    shape.add(radius);
    finish(paint);
}

void Canvas::corners(const Rect& outline, double radius, double line_width, const Paint& paint) {
    const Rect whole = outline.inset(-line_width / 2);
    const double reach = radius + line_width / 2;
    const PixelBox outside = whole_pixels(whole);
    // From there on, and up to there, edges are straight.
    const PixelBox inside{int(std::ceil(whole.x + reach)), int(std::ceil(whole.y + reach)),
                          int(std::floor(whole.right() - reach)),
                          int(std::floor(whole.bottom() - reach))};
    corner({outside.x1, outside.y1, inside.x1, inside.y1}, outline, radius, line_width, paint);
    corner({inside.x2, outside.y1, outside.x2, inside.y1}, outline, radius, line_width, paint);
    corner({outside.x1, inside.y2, inside.x1, outside.y2}, outline, radius, line_width, paint);
    corner({inside.x2, inside.y2, outside.x2, outside.y2}, outline, radius, line_width, paint);
    if (line_width == 0.0) {
        pixels.fill(inside.x1, whole.y, inside.x2, whole.bottom(), paint);
        pixels.fill(whole.x, inside.y1, inside.x1, inside.y2, paint);
        pixels.fill(inside.x2, inside.y1, whole.right(), inside.y2, paint);
        return;
    }
    pixels.fill(inside.x1, whole.y, inside.x2, whole.y + line_width, paint);
    pixels.fill(inside.x1, whole.bottom() - line_width, inside.x2, whole.bottom(), paint);
    pixels.fill(whole.x, inside.y1, whole.x + line_width, inside.y2, paint);
    pixels.fill(whole.right() - line_width, inside.y1, whole.right(), inside.y2, paint);
}

// The same for rectangles of all sizes: what lies beyond the corner is brought near.
void Canvas::corner(const PixelBox& box, const Rect& outline, double radius, double line_width,
                    const Paint& paint) {
    if (box.x1 >= box.x2 || box.y1 >= box.y2 || !pixels.shows(box))
        return;
    const bool is_left = box.x1 < outline.center().x;
    const bool is_top = box.y1 < outline.center().y;
    const double size = 4 * (radius + line_width) + 4;
    shape_left = box.x1;
    shape_top = box.y1;
    shape.begin(Outline::ROUNDED, box.x2 - box.x1, box.y2 - box.y1, {line_width, false});
    add(is_left ? outline.x : outline.right() - size, is_top ? outline.y : outline.bottom() - size);
    shape.add(size);
    shape.add(size);
    shape.add(radius);
    finish(paint);
}

void Canvas::fill(const Rect& area, Color color, double radius, double alpha) {
    const Rect filled = scaled(area);
    if (filled.w <= 0.0 || filled.h <= 0.0)
        return;
    if (radius > 0.0)
        rounded(filled, std::min({radius * scale, filled.w / 2, filled.h / 2}), 0.0,
                paint_of(color, alpha));
    else
        pixels.fill(filled.x, filled.y, filled.right(), filled.bottom(), paint_of(color, alpha));
}

void Canvas::fill_around(const Rect& area, const std::vector<Rect>& covered, double radius,
                         Color color) {
    const auto whole_within = [](const Rect& pixels_area) {
        return PixelBox{int(std::ceil(pixels_area.x)), int(std::ceil(pixels_area.y)),
                        int(std::floor(pixels_area.right())),
                        int(std::floor(pixels_area.bottom()))};
    };
    std::vector<PixelBox> boxes;
    for (const Rect& cover : covered) {
        // All but the corners.
        boxes.push_back(whole_within(scaled(cover.inset(radius, 0))));
        boxes.push_back(whole_within(scaled(cover.inset(0, radius))));
    }
    pixels.fill_around(whole_pixels(scaled(area)), boxes, palette[size_t(color)]);
}

void Canvas::fill_all(const std::vector<Rect>& areas, Color color, double alpha) {
    if (areas.empty())
        return;
    Rect all = areas.front();
    for (const Rect& area : areas) {
        const Point corner{std::max(all.right(), area.right()),
                           std::max(all.bottom(), area.bottom())};
        all.x = std::min(all.x, area.x);
        all.y = std::min(all.y, area.y);
        all.w = corner.x - all.x;
        all.h = corner.y - all.y;
    }
    if (!begin(Outline::BOXES, scaled(all)))
        return;
    for (const Rect& area : areas) {
        add(area.x * scale, area.y * scale);
        shape.add(area.w * scale);
        shape.add(area.h * scale);
    }
    finish(paint_of(color, alpha));
}

void Canvas::frame(const Rect& area, Color color, double radius, double width) {
    const Rect outline = scaled(area.inset(width / 2));
    if (outline.w > 0.0 && outline.h > 0.0)
        rounded(outline, std::min({radius * scale, outline.w / 2, outline.h / 2}), width * scale,
                paint_of(color));
}

void Canvas::disc(Point center, double radius, Color color) {
    if (!begin(Outline::ARC, scaled(square_around(center, radius))))
        return;
    add(center.x * scale, center.y * scale);
    for (const double number : {radius * scale, 0.0, 2 * PI * Shape::ANGLE})
        shape.add(number);
    finish(paint_of(color));
}

void Canvas::ring(Point center, double radius, Color color, double width) {
    arc(center, radius, 0, 2 * PI, color, width);
}

void Canvas::arc(Point center, double radius, double from, double to, Color color, double width) {
    if (!begin(Outline::ARC, scaled(square_around(center, radius)), {width * scale, false}))
        return;
    add(center.x * scale, center.y * scale);
    for (const double number : {radius * scale, from * Shape::ANGLE, to * Shape::ANGLE})
        shape.add(number);
    finish(paint_of(color));
}

void Canvas::line(Point from, Point to, Color color, double width) {
    if (from.x != to.x && from.y != to.y) {
        wave({from, to}, color, width);
        return;
    }
    // Level and upright lines are boxes.
    const double left = std::min(from.x, to.x);
    const double top = std::min(from.y, to.y);
    const bool is_upright = from.x == to.x;
    fill({is_upright ? left - width / 2 : left, is_upright ? top : top - width / 2,
          is_upright ? width : std::abs(to.x - from.x),
          is_upright ? std::abs(to.y - from.y) : width},
         color);
}

void Canvas::lines(const std::vector<Point>& points, const Paint& paint, double width,
                   bool is_fine) {
    if (!begin_points(Outline::LINES, points, {width * scale, is_fine}))
        return;
    for (const Point& point : points)
        add(point.x * scale, point.y * scale);
    finish(paint);
}

void Canvas::polyline(const std::vector<Point>& points, Color color, double width, double alpha) {
    // Steps of sixteen shades show where a curve is nearly level.
    lines(points, paint_of(color, alpha), width, true);
}

void Canvas::wave(const std::vector<Point>& points, Color color, double width) {
    lines(points, paint_of(color), width, false);
}

void Canvas::fill_below(const std::vector<Point>& points, double base, Color color, double alpha) {
    if (points.empty())
        return;
    std::vector<Point> around = points;
    around.push_back({points.back().x, base});
    around.push_back({points.front().x, base});
    area_of(around, paint_of(color, alpha));
}

void Canvas::polygon(const std::vector<Point>& points, Color color) {
    area_of(points, paint_of(color));
}

void Canvas::area_of(const std::vector<Point>& points, const Paint& paint) {
    if (!begin_points(Outline::POLYGON, points, {}))
        return;
    for (const Point& point : points)
        add(point.x * scale, point.y * scale);
    finish(paint);
}

void Canvas::curve(Point from, Point to, Color color, double width) {
    if (!begin_points(Outline::CURVE, {from, to}, {width * scale, false}))
        return;
    add(from.x * scale, from.y * scale);
    add(to.x * scale, to.y * scale);
    finish(paint_of(color));
}

TextRun& Canvas::run_of(std::string printable, double size, Weight weight) {
    const TextRun::Key key{std::move(printable), std::max(size, theme::SMALL) * scale, weight};
    TextRun* const known = store.texts.find(key);
    if (known != nullptr)
        return *known;
    TextRun made(key);
    const size_t bytes = made.bytes() + sizeof(made) + 2 * key.text.size();
    return store.texts.add(key, std::move(made), bytes);
}

double Canvas::text_width(std::string_view text, double size, Weight weight) {
    return text.empty() ? 0.0
                        : run_of(printable_text(text, text.size()), size, weight).width() / scale;
}

void Canvas::text(const Rect& area, std::string_view text, const TextStyle& style) {
    if (text.empty() || !pixels.shows(whole_pixels(scaled(area))))
        return;
    // Names come from files, and text that is no UTF-8 would end all drawing.
    constexpr size_t MAX_CHARACTERS = 200;
    std::string kept = printable_text(text, MAX_CHARACTERS);
    TextRun* run = &run_of(kept, style.size, style.weight);
    constexpr double TOLERANCE = 0.5;
    while (!kept.empty() && run->width() / scale > area.w + TOLERANCE) {
        pop_character(kept);
        run = &run_of(kept + "\u2026", style.size, style.weight);
    }
    const Mask* const mask = run->mask();
    if (mask == nullptr)
        return;
    const double free = area.w - run->width() / scale;
    double x = area.x;
    if (style.align == Align::CENTER)
        x += free / 2;
    else if (style.align == Align::RIGHT)
        x += free;
    // The height of a capital letter, so that all text of a row sits on one line.
    constexpr double CAPITAL = 0.73;
    const double y = area.y + (area.h + CAPITAL * style.size) / 2;
    // On whole pixels, for even stems.
    pixels.fill(*mask, int(std::lround(x * scale)) + run->left(),
                int(std::lround(y * scale)) + run->top(), paint_of(style.color));
}

void Canvas::clip(const std::vector<Rect>& areas) {
    std::vector<PixelBox> boxes;
    boxes.reserve(areas.size());
    for (const Rect& area : areas)
        boxes.push_back(whole_pixels(scaled(area)));
    pixels.clip(boxes);
}

void Canvas::unclip() {
    pixels.unclip();
}

} // namespace tarquil
