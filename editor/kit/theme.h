// The editor's colours, by what they are for, and its text sizes.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarquil {

// What something is drawn with; which colour that is, the theme says.
enum class Ink : uint8_t {
    BACKGROUND,
    HEADER,
    PANEL,
    WELL,    // plots, text fields, the slots of sliders
    CONTROL, // buttons, menus, knobs
    HOVER,
    OUTLINE, // edges of controls and of what lies over the page
    GRID,
    GRID_STRONG,
    TEXT,
    TEXT_MUTED,
    TEXT_DIM, // what has no effect now
    ACCENT,
    ACCENT_DIM,
    WARM,
    GREEN,
    RED,
    FOCUS,
    SHADOW,
    TOOLTIP,
    THUMB, // of a slider
    MUTED, // a band that is silenced
    WHITE_KEY,
    BLACK_KEY,
    KEY_LABEL, // on white ones
    PART_1,
    PART_2,
    PART_3,
    PART_4,
    PART_5,
    PART_6,
};
inline constexpr size_t NUM_INKS = size_t(Ink::PART_6) + 1;

using Color = Ink;
using Palette = std::array<uint32_t, NUM_INKS>; // 0xRRGGBB

enum class ThemeKind : uint8_t { DARK, LIGHT, HIGH_CONTRAST };
inline constexpr ThemeKind ALL_THEMES[] = {ThemeKind::DARK, ThemeKind::LIGHT,
                                           ThemeKind::HIGH_CONTRAST};

const Palette& palette_of(ThemeKind theme);
// "dark", "light", "high-contrast".
const char* theme_key(ThemeKind theme);

namespace theme {

inline constexpr Color BACKGROUND = Ink::BACKGROUND;
inline constexpr Color HEADER = Ink::HEADER;
inline constexpr Color PANEL = Ink::PANEL;
inline constexpr Color WELL = Ink::WELL;
inline constexpr Color CONTROL = Ink::CONTROL;
inline constexpr Color HOVER = Ink::HOVER;
inline constexpr Color OUTLINE = Ink::OUTLINE;
inline constexpr Color GRID = Ink::GRID;
inline constexpr Color GRID_STRONG = Ink::GRID_STRONG;
inline constexpr Color TEXT = Ink::TEXT;
inline constexpr Color TEXT_MUTED = Ink::TEXT_MUTED;
inline constexpr Color TEXT_DIM = Ink::TEXT_DIM;
inline constexpr Color ACCENT = Ink::ACCENT;
inline constexpr Color ACCENT_DIM = Ink::ACCENT_DIM;
inline constexpr Color WARM = Ink::WARM;
inline constexpr Color GREEN = Ink::GREEN;
inline constexpr Color RED = Ink::RED;
inline constexpr Color FOCUS = Ink::FOCUS;
inline constexpr Color SHADOW = Ink::SHADOW;
inline constexpr Color TOOLTIP = Ink::TOOLTIP;
inline constexpr Color THUMB = Ink::THUMB;
inline constexpr Color MUTED = Ink::MUTED;
inline constexpr Color WHITE_KEY = Ink::WHITE_KEY;
inline constexpr Color BLACK_KEY = Ink::BLACK_KEY;
inline constexpr Color KEY_LABEL = Ink::KEY_LABEL;

// Of the parts of a whole: oscillators, envelopes, filters, bands.
inline constexpr Color PARTS[] = {Ink::PART_1, Ink::PART_2, Ink::PART_3,
                                  Ink::PART_4, Ink::PART_5, Ink::PART_6};

inline constexpr double SMALL = 11.0; // the least that is read at 100 %
inline constexpr double NORMAL = 11.5;
inline constexpr double LARGE = 14.0;

} // namespace theme

} // namespace tarquil
