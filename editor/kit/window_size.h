// The editor's size in its own units.

#pragma once

namespace tarquil {

inline constexpr double WINDOW_WIDTH = 1040.0;
inline constexpr double WINDOW_HEIGHT = 680.0;

} // namespace tarquil
