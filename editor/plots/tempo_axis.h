// Plots over time of what follows the host's tempo.

#pragma once

#include <vector>

#include "editor/kit/ui_host.h"
#include "editor/plots/plot_frame.h"

namespace tarquil {

// About eight lines over `seconds`: note lengths while something follows the tempo, else times.
std::vector<GridLine> tempo_lines(const ViewState& view, double seconds);

// "4.00 Hz at 120 bpm" at the plot's top right.
void draw_tempo(Canvas& canvas, const Rect& plot, const ViewState& view, double hertz);

} // namespace tarquil
