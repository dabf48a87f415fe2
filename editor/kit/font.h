// The editor's typefaces, loaded from packaged files, so that text looks and measures the same
// whatever the user's font settings are.

#pragma once

#include <cairo.h>

namespace tarquil {

enum class Weight { NORMAL, BOLD };

// Never null: where the file is missing, cairo's own choice of a sans-serif.  Lives as long as the
// process.
cairo_font_face_t* editor_font(Weight weight);

} // namespace tarquil
