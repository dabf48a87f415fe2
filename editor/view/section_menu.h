// What can be done with a panel as a whole: copy, paste, initialise, lock, and leave it, or all of
// the sound that is not locked, to chance.

#pragma once

#include <memory>
#include <vector>

#include "editor/kit/page.h"
#include "editor/widgets/menu.h"

namespace tarquil {

// The controllers that are set on a panel.
std::vector<unsigned> section_controllers(const Page& page, const Panel& panel);

// What the sound has on panels that are not locked, on any page.
std::vector<unsigned> unlocked_controllers(const std::vector<Page>& pages, const ViewState& state);

bool is_locked(const ViewState& state, const Page& page, const Panel& panel);

// The right end of a panel's title, which opens the menu; empty for a panel that sets nothing.
Rect section_button(const Page& page, const Panel& panel);
void draw_section_button(Canvas& canvas, const Rect& button, bool is_hovered, bool is_locked);

std::unique_ptr<Menu> make_section_menu(UiHost& host, const std::vector<Page>& pages,
                                        const Page& page, const Panel& panel);

} // namespace tarquil
