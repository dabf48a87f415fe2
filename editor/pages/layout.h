// How pages are put together: rows of controls, each shown as its kind of values asks for.

#pragma once

#include <initializer_list>

#include "editor/kit/page.h"

namespace tarquil {

// A controller and its name on the page.
struct ControlSpec {
    unsigned number;
    const char* label;
};

// What lies below the header and the tabs.
inline constexpr Rect PAGE_AREA{12, 122, 1016, 528};

inline constexpr double GAP = 8.0;           // between panels
inline constexpr double TITLE_HEIGHT = 24.0; // of a panel
inline constexpr double KNOB_WIDTH = 78.0;
inline constexpr double KNOB_HEIGHT = 74.0;

// Adds a panel and returns the room inside it.
Rect add_panel(Page& page, const Rect& area, const std::string& title);

// A switch for an on/off controller, a box for a list, a knob for everything else.
void add_control(Page& page, const Rect& area, const ControlSpec& control);

// Side by side, each in a part of `row` of the same width.
void add_row(Page& page, const Rect& row, std::initializer_list<ControlSpec> controls);

// `count` parts of the same width with gaps between them.
Rect column_of(const Rect& area, unsigned index, unsigned count, double gap = GAP);
Rect row_of(const Rect& area, unsigned index, unsigned count, double gap = GAP);

// The note that waves and key-following filters are drawn at.
void add_note_chooser(Page& page, const Rect& area);

} // namespace tarquil
