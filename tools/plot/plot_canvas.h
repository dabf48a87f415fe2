// The layout of a plot: title, axes with grid and ticks, curves, legend.

#pragma once

#include "tools/plot/plot.h"
#include "tools/plot/plot_painter.h"

namespace tarquil {

// The smallest picture, in pixels, whose parts do not overlap, and the largest one that is drawn.
inline constexpr int MIN_PLOT_WIDTH = 640;
inline constexpr int MIN_PLOT_HEIGHT = 320;
inline constexpr int MAX_PLOT_SIZE = 10000;

class PlotCanvas {
  public:
    // Draws on a picture of `width` by `height` pixels.
    PlotCanvas(PlotPainter& plot_painter, int width, int height);

    void draw(const Plot& plot);

  private:
    void draw_x_axis(const PlotAxis& axis);
    void draw_y_axis(const PlotAxis& axis);
    void draw_curves(const Plot& plot);
    // Draws one curve's entry with its top at `top` and returns where the next begins.
    double draw_legend_entry(const PlotCurve& curve, Color color, double top);

    PlotPainter& painter;
    Rectangle picture;
    Rectangle area; // between the axes
};

} // namespace tarquil
