// Limits of a cutoff as an angle, in radians per sample.

#pragma once

namespace tarquil {

inline constexpr float MIN_CUTOFF_ANGLE = 0.001F;
inline constexpr float MAX_CUTOFF_ANGLE = 3.1415927F; // pi

} // namespace tarquil
