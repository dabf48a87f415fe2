// Drawing in the editor's units: shapes, lines and text over a cairo context.

#pragma once

#include <cairo.h>

#include <string>
#include <string_view>
#include <vector>

#include "curves/plot_point.h"
#include "editor/kit/font.h"
#include "editor/kit/geometry.h"
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
    // The context is scaled to the editor's units, and left as it was.
    explicit Canvas(cairo_t* context, ThemeKind theme = ThemeKind::DARK);
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas();

    void fill(const Rect& area, Color color, double radius = 0.0, double alpha = 1.0);
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
    void wave(const std::vector<Point>& points, Color color, double width, double alpha = 1.0);
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

    cairo_t* context() { return cr; }

  private:
    void set_color(Color color, double alpha = 1.0);
    void set_font(double size, Weight weight);
    double measure(const std::string& printable, double size, Weight weight);
    void rounded(const Rect& area, double radius);

    cairo_t* cr;
    const Palette& palette;
};

// Removes the last character of UTF-8 text.
void pop_character(std::string& text);

} // namespace tarquil
