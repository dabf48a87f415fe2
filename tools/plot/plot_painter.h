// The few shapes that a plot consists of; each kind of file draws them its own way.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tools/plot/plot.h"

namespace tarquil {

// 0xRRGGBB
using Color = uint32_t;

struct Rectangle {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
};

enum class TextAlign { START, MIDDLE, END };

struct TextStyle {
    double size = 12.0; // pixels
    Color color = 0;
    TextAlign align = TextAlign::START;
    bool is_bold = false;
    bool is_upright = false; // runs from bottom to top
};

// Coordinates and widths in pixels, y downwards.
class PlotPainter {
  public:
    PlotPainter() = default;
    PlotPainter(const PlotPainter&) = delete;
    PlotPainter& operator=(const PlotPainter&) = delete;
    virtual ~PlotPainter() = default;

    virtual void fill(const Rectangle& area, Color color) = 0;
    virtual void frame(const Rectangle& area, Color color, double line_width) = 0;
    // A line through `points` in their order.
    virtual void line(const std::vector<PlotPoint>& points, Color color, double line_width) = 0;
    // What is drawn between these two is cut at the edges of `area`.
    virtual void begin_clip(const Rectangle& area) = 0;
    virtual void end_clip() = 0;
    // `text` is UTF-8 without control characters; `x`, `y`: the alignment point on the base line.
    virtual void text(std::string_view text, double x, double y, const TextStyle& style) = 0;

    // The file's bytes; call once, at the end.
    virtual std::string finish() = 0;
};

} // namespace tarquil
