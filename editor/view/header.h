// The top of every page: the program, the channels, meters, undo, panic and scale.

#pragma once

#include <functional>

#include "editor/kit/level_meter.h"
#include "editor/kit/page.h"

namespace tarquil {

// What the header shows and does beyond the model.
struct HeaderControls {
    const LevelMeter* meter = nullptr;
    std::function<void()> clear_clip;
    const double* channel_lights = nullptr; // 0..1 for each channel
    std::function<double()> get_scale;
    std::function<void(double scale)> set_scale;
    std::function<double()> get_largest_scale;
};

Page make_header(const HeaderControls& controls);

inline constexpr double HEADER_HEIGHT = 86.0;

} // namespace tarquil
