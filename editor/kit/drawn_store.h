// The masks of shapes and texts that a window draws again and again.

#pragma once

#include "editor/kit/recent_store.h"
#include "editor/kit/shape.h"
#include "editor/kit/text_run.h"

namespace tarquil {

struct DrawnStore {
    RecentStore<Shape::Key, Mask, ShapeHash> shapes;
    RecentStore<TextRun::Key, TextRun, TextHash> texts;
};

} // namespace tarquil
