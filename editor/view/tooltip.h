// The lines about what is under the pointer.

#pragma once

#include <string>

#include "editor/kit/canvas.h"

namespace tarquil {

// `text` has one or more lines.  Returns the area that it covers.
Rect draw_tooltip_box(Canvas& canvas, Point pointer, const std::string& text);

} // namespace tarquil
