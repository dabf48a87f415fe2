// Drawing in the editor's units: shapes, lines and text.
//
// Upright boxes are filled at once.  All else is a mask of pixels, made by cairo once for each
// shape and text and kept in a DrawnStore, and a colour through it.

#pragma once

#include <cairo.h>

#include <string>
#include <string_view>
#include <vector>

#include "curves/plot_point.h"
#include "editor/kit/drawn_store.h"
#include "editor/kit/font.h"
#include "editor/kit/geometry.h"
#include "editor/kit/pixels.h"
#include "editor/kit/theme.h"

namespace tarquil {

enum class Align { LEFT, CENTER, RIGHT };

struct TextStyle {
    double size = theme::NORMAL;
    Color color = theme::TEXT;
    Align align = Align::LEFT;
    Weight weight = Weight::NORMAL;
};

class Canvas {
  public:
    // The context is one of an image (CAIRO_FORMAT_RGB24), scaled to the editor's units.  The store
    // outlives the canvas.
    Canvas(cairo_t* context, DrawnStore& store, ThemeKind theme = ThemeKind::DARK);

    void fill(const Rect& area, Color color, double radius = 0.0, double alpha = 1.0);
    // What the `covered` areas, to be filled with round corners next, leave of an upright area.
    void fill_around(const Rect& area, const std::vector<Rect>& covered, double radius,
                     Color color);
    // Areas that do not overlap.
    void fill_all(const std::vector<Rect>& areas, Color color, double alpha);
    void frame(const Rect& area, Color color, double radius = 0.0, double width = 1.0);
    void disc(Point center, double radius, Color color);
    void ring(Point center, double radius, Color color, double width);
    // Part of a circle, clockwise in radians from the right.
    void arc(Point center, double radius, double from, double to, Color color, double width);
    void line(Point from, Point to, Color color, double width = 1.0);
    void polyline(const std::vector<Point>& points, Color color, double width, double alpha = 1.0);
    // The same for a curve that is steep nearly everywhere, in less time.
    void wave(const std::vector<Point>& points, Color color, double width);
    // The area between the points and the height `base`.
    void fill_below(const std::vector<Point>& points, double base, Color color, double alpha);
    void polygon(const std::vector<Point>& points, Color color);
    void curve(Point from, Point to, Color color, double width);

    // One line in the middle of the area's height, cut with "…" where it does not fit; at least of
    // the size theme::SMALL.
    void text(const Rect& area, std::string_view text, const TextStyle& style);
    double text_width(std::string_view text, double size, Weight weight = Weight::NORMAL);

    // To the areas, grown to whole pixels, until the next unclip.
    void clip(const std::vector<Rect>& areas);
    void clip(const Rect& area) { clip(std::vector<Rect>{area}); }
    void unclip();

  private:
    [[nodiscard]] Paint paint_of(Color color, double alpha = 1.0) const;
    // In pixels.
    [[nodiscard]] Rect scaled(const Rect& area) const;
    bool begin(Outline outline, const Rect& pixels_area, const Shape::Style& style = {});
    bool begin_points(Outline outline, const std::vector<Point>& points, const Shape::Style& style);
    void add(double x, double y);
    void finish(const Paint& paint);
    void rounded(const Rect& pixels_area, double radius, double line_width, const Paint& paint);
    void corners(const Rect& pixels_area, double radius, double line_width, const Paint& paint);
    void corner(const PixelBox& box, const Rect& outline, double radius, double line_width,
                const Paint& paint);
    void lines(const std::vector<Point>& points, const Paint& paint, double width, bool is_fine);
    void area_of(const std::vector<Point>& points, const Paint& paint);
    TextRun& run_of(std::string printable, double size, Weight weight);

    double scale; // pixels a unit
    const Palette& palette;
    DrawnStore& store;
    Pixels pixels;
    // of the shape that is begun
    Shape shape;
    int shape_left = 0;
    int shape_top = 0;
};

// Removes the last character of UTF-8 text.
void pop_character(std::string& text);

} // namespace tarquil
