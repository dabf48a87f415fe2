// Writing of a plot into a picture file.

#pragma once

#include <string>

#include "tools/plot/plot.h"

namespace tarquil {

struct PictureOptions {
    std::string path; // "-" is SVG on standard output
    int width = 1000; // pixels
    int height = 500;
};

// SVG or PNG by the path's ending; BadInput for any other.
// "-" goes to the descriptor `results`.
void write_plot(const Plot& plot, const PictureOptions& options, int results);

} // namespace tarquil
