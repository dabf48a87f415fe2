// Drawing into SVG, whose text stays text that can be searched and edited.

#pragma once

#include "tools/plot/plot_painter.h"

namespace tarquil {

class SvgPainter : public PlotPainter {
  public:
    // In pixels.
    SvgPainter(int width, int height);

    void fill(const Rectangle& area, Color color) override;
    void frame(const Rectangle& area, Color color, double line_width) override;
    void line(const std::vector<PlotPoint>& points, Color color, double line_width) override;
    void begin_clip(const Rectangle& area) override;
    void end_clip() override;
    void text(std::string_view text, double x, double y, const TextStyle& style) override;
    std::string finish() override;

  private:
    void rectangle(const Rectangle& area);

    std::string svg;
    int num_clips = 0;
};

} // namespace tarquil
