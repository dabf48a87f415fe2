// The lines about what is under the pointer.

#pragma once

#include <string>

#include "vst/editor/ui/canvas.h"

// `text` has one or more lines.  Returns the area that it covers.
Rect draw_tooltip_box(Canvas& canvas, Point pointer, const std::string& text);
