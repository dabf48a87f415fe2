// A point of a drawn curve, in the units of its axes.

#pragma once

namespace tarquil {

struct PlotPoint {
    double x = 0.0;
    double y = 0.0;
};

} // namespace tarquil
