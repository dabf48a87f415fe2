// The ground of a plot: its grid with numbers, and the way from values to points.

#pragma once

#include <string>
#include <vector>

#include "editor/kit/canvas.h"

namespace tarquil {

// A line of the grid, with a number at it or none.
struct GridLine {
    double value = 0.0;
    std::string text;
};

class PlotFrame {
  public:
    // Values from left to right and from bottom to top; a logarithmic x has both above 0.
    PlotFrame(const Rect& plot_area, double left, double right, double bottom, double top,
              bool logarithmic_x = false);

    [[nodiscard]] double x(double value) const;
    [[nodiscard]] double y(double value) const;
    [[nodiscard]] Point point(double x_value, double y_value) const;
    // The values at a place of the window.
    [[nodiscard]] double x_value(double x_place) const;
    [[nodiscard]] double y_value(double y_place) const;

    // Well, grid and numbers; the numbers on the well, or left of it and below.
    enum class Numbers { INSIDE, OUTSIDE };
    void draw(Canvas& canvas, const std::vector<GridLine>& columns,
              const std::vector<GridLine>& rows, Numbers numbers = Numbers::INSIDE) const;

    [[nodiscard]] const Rect& get_area() const { return area; }

  private:
    Rect area;
    double x_from;
    double x_to;
    double y_from;
    double y_to;
    bool is_logarithmic;
};

// What numbers outside leave of a plot.
inline Rect numbered_part(const Rect& area) {
    return {area.x + 38, area.y, area.w - 38, area.h - 15};
}

// From 20 Hz to 20 kHz, gains in dB from bottom to top.
PlotFrame frequency_frame(const Rect& plot_area, double bottom, double top);

// Ten octaves of cutoff are 127 steps; how many a unit of the frame's width is.
double cutoff_steps(const PlotFrame& frame);

// The index of the nearest of `places` within `reach` of a point; -1 when none is so near.
int nearest_place(const std::vector<Point>& places, Point at, double reach);

// Off every plot: where a thing that is not there stands.
inline constexpr Point NOWHERE{-1e6, -1e6};

// Where a dot of that radius was, and where it is; empty when it has not moved.
std::vector<Rect> moved_dot(Point before, Point now, double radius);

// The lines of a frequency axis from 20 Hz to 20 kHz, and of gains in dB every `step`.
const std::vector<GridLine>& frequency_lines();
std::vector<GridLine> decibel_lines(int lowest, int highest, int step);

} // namespace tarquil
