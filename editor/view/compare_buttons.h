// A and B: two versions of the edited program to listen to in turn.

#pragma once

#include "editor/kit/page.h"

namespace tarquil {

void add_compare_buttons(Page& header, const Rect& area);

} // namespace tarquil
