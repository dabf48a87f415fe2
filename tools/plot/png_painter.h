// Drawing into a PNG image, with cairo.

#pragma once

#include <cairo.h>

#include <memory>

#include "tools/plot/plot_painter.h"

namespace tarquil {

// Every operation throws a Failure when there is no memory for the image.
class PngPainter : public PlotPainter {
  public:
    // In pixels.
    PngPainter(int width, int height);

    void fill(const Rectangle& area, Color color) override;
    void frame(const Rectangle& area, Color color, double line_width) override;
    void line(const std::vector<PlotPoint>& points, Color color, double line_width) override;
    void begin_clip(const Rectangle& area) override;
    void end_clip() override;
    void text(std::string_view text, double x, double y, const TextStyle& style) override;
    std::string finish() override;

  private:
    struct Destroy {
        void operator()(cairo_surface_t* image) const { cairo_surface_destroy(image); }
        void operator()(cairo_t* drawing) const { cairo_destroy(drawing); }
    };

    void set_color(Color color);

    std::unique_ptr<cairo_surface_t, Destroy> surface;
    std::unique_ptr<cairo_t, Destroy> context;
};

} // namespace tarquil
