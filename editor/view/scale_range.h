// The sizes that the window may have.

#pragma once

#include <vector>

#include "editor/model/editor_settings.h"

namespace tarquil {

struct ScaleRange {
    double usual = 1.0; // while the user has chosen none
    double largest = EditorSettings::MAX_SCALE;
};

// What is offered: those that fit, and the largest.
std::vector<double> offered_scales(double largest);
// The next one offered beyond `scale`, upwards or downwards; `scale` itself at the end.
double next_scale(double scale, bool is_larger, double largest);

} // namespace tarquil
