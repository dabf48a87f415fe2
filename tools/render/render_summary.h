// What a render tells about the sound that it has written.

#pragma once

#include <string>

#include "tools/render/renderer.h"

namespace tarquil {

// One line: the place, length, format, peak, loudness and speed.
std::string summary_text(const std::string& path, const RenderResult& result);

// The same as a JSON object; levels of silence are null.  On demand with what became
// of a General MIDI song's messages.
std::string summary_json(const std::string& path, const RenderResult& result, bool with_report);

} // namespace tarquil
