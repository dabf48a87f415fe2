// When the sound after a song's last event counts as ended.

#pragma once

namespace tarquil {

// A sound below -90 dBFS for half a second has ended.
inline constexpr float SILENCE_LEVEL = 3.1622777e-5F;
inline constexpr double SILENCE_SECONDS = 0.5;

// What rings on longer than this is cut off.
inline constexpr double MAX_RINGING_SECONDS = 30.0;

} // namespace tarquil
