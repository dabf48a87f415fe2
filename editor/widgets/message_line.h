// A line that tells what came of something: a mark and a colour for its kind.

#pragma once

#include <string>

#include "editor/kit/canvas.h"
#include "editor/kit/ui_host.h"

namespace tarquil {

// A tick for what is done, a cross in a disc for what has failed.
void draw_message(Canvas& canvas, const Rect& area, const std::string& text, MessageKind kind);

} // namespace tarquil
