// The line at the bottom of the window: what came of the last action, else what is wrong, else a
// hint and how the sound is played.

#pragma once

#include <string>

#include "editor/kit/canvas.h"
#include "editor/kit/ui_host.h"
#include "editor/model/editor_notice.h"

namespace tarquil {

struct StatusLine {
    std::string message;
    MessageKind kind = MessageKind::NOTE;
    EditorNotice notice;
};

void draw_status(Canvas& canvas, const Rect& area, const StatusLine& status);

} // namespace tarquil
