// The lines about what is under the pointer.

#pragma once

#include <string>

#include "vst/editor/ui/canvas.h"

// `text` has one or more lines.
void draw_tooltip_box(Canvas& canvas, Point pointer, const std::string& text);
