// Writing of a plot into a picture file.

#pragma once

#include <functional>
#include <string>

#include "tools/plot/plot.h"
#include "tools/plot/plot_painter.h"

namespace tarquil {

struct PictureOptions {
    std::string path; // "-" is SVG on standard output
    int width = 1000; // pixels
    int height = 500;
};

// What draws on a picture of the options' size.
using PictureDrawing = std::function<void(PlotPainter&)>;

// SVG or PNG by the path's ending; BadInput for any other.
// "-" goes to the descriptor `results`.
void write_picture(const PictureOptions& options, int results, const PictureDrawing& draw);
void write_plot(const Plot& plot, const PictureOptions& options, int results);

} // namespace tarquil
