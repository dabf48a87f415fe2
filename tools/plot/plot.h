// What a plot shows, apart from how it is drawn.

#pragma once

#include <string>
#include <vector>

#include "curves/plot_point.h"
#include "tools/plot/plot_axis.h"

namespace tarquil {

// A line through `points`.  The legend shows `name` and, below it, one line for each of `details`.
struct PlotCurve {
    std::string name;
    std::vector<std::string> details;
    std::vector<PlotPoint> points;
    bool is_main = false; // the curve that the others add up to, if there are several
};

struct Plot {
    std::string title;
    PlotAxis x;
    PlotAxis y;
    std::vector<PlotCurve> curves;
};

} // namespace tarquil
