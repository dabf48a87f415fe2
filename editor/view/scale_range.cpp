// The sizes that the window may have.

#include "editor/view/scale_range.h"

namespace tarquil {

namespace {

constexpr double NEAR = 0.01; // which counts as the same

} // namespace

std::vector<double> offered_scales(double largest) {
    std::vector<double> scales;
    for (const double scale : {0.75, 1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0}) {
        if (scale <= largest)
            scales.push_back(scale);
    }
    if (scales.empty() || (scales.back() < largest - NEAR && largest < EditorSettings::MAX_SCALE))
        scales.push_back(largest);
    return scales;
}

double next_scale(double scale, bool is_larger, double largest) {
    double found = scale;
    for (const double offered : offered_scales(largest)) {
        if (is_larger && offered > scale + NEAR)
            return offered;
        if (!is_larger && offered < scale - NEAR)
            found = offered;
    }
    return found;
}

} // namespace tarquil
