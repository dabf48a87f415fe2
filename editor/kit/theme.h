// The editor's colours and text sizes.

#pragma once

#include <cstdint>

namespace tarquil {

using Color = uint32_t; // 0xRRGGBB

namespace theme {

inline constexpr Color BACKGROUND = 0x14171B;
inline constexpr Color HEADER = 0x1B1F25;
inline constexpr Color PANEL = 0x1E232A;
inline constexpr Color WELL = 0x13161A;    // plots, text fields, the slots of sliders
inline constexpr Color CONTROL = 0x2B323B; // buttons, menus, knobs
inline constexpr Color HOVER = 0x363F4A;
inline constexpr Color OUTLINE = 0x39424E;
inline constexpr Color GRID = 0x262C34;
inline constexpr Color GRID_STRONG = 0x38414C;

inline constexpr Color TEXT = 0xE8ECF1;
inline constexpr Color TEXT_MUTED = 0x9BA6B3; // 7:1 on a panel
inline constexpr Color TEXT_DIM = 0x5D6873;   // what has no effect now

inline constexpr Color ACCENT = 0x4FC3D9;
inline constexpr Color ACCENT_DIM = 0x3A5B66;
inline constexpr Color WARM = 0xF0A75A;
inline constexpr Color GREEN = 0x76C893;
inline constexpr Color RED = 0xE5645E;
inline constexpr Color FOCUS = 0xFFFFFF;

// Of the parts of a whole: oscillators, envelopes, filters, bands.
inline constexpr Color PARTS[] = {0x4FC3D9, 0xF0A75A, 0xB38CF0, 0x76C893, 0xE88BB3, 0xD9CF6A};

inline constexpr double SMALL = 10.5;
inline constexpr double NORMAL = 11.5;
inline constexpr double LARGE = 14.0;

} // namespace theme

} // namespace tarquil
