// The keyboard along the bottom: switches, wheels and keys.

#pragma once

#include "editor/kit/page.h"
#include "editor/model/hands.h"
#include "editor/view/key_layout.h"

namespace tarquil {

inline constexpr Rect PIANO_AREA{184, 684, 844, 84};

// Both stay as long as the page, which takes no part when the keyboard is hidden.
Page make_keyboard(Hands& hands, KeyLayout& layout);

// Shows and hides it: in the line above.
void add_keyboard_switch(Page& page, const std::function<bool()>& is_shown,
                         const std::function<void(bool)>& show);

// What that leaves of the line's width.
inline constexpr double KEYBOARD_SWITCH_WIDTH = 116.0;

} // namespace tarquil
