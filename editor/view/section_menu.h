// What can be done with a panel as a whole: initialise it, randomise it.

#pragma once

#include <memory>
#include <vector>

#include "editor/kit/page.h"
#include "editor/widgets/menu.h"

namespace tarquil {

// The controllers that are set on a panel.
std::vector<unsigned> section_controllers(const Page& page, const Panel& panel);

// The right end of a panel's title, which opens the menu; empty for a panel that sets nothing.
Rect section_button(const Page& page, const Panel& panel);
void draw_section_button(Canvas& canvas, const Rect& button, bool is_hovered);

std::unique_ptr<Menu> make_section_menu(UiHost& host, const Page& page, const Panel& panel);

} // namespace tarquil
