// Parts of a sound as text, for the desktop's clipboard.
//
//   section = Envelope 2
//   env2_attack = 0.310000
//   ...
//
// Keys and values are those of the files.  A part fits where the same keys are, or those of another
// of its kind, such as another envelope.

#pragma once

#include <span>
#include <string>
#include <string_view>

#include "editor/model/editor_model.h"

namespace tarquil {

// `controllers` have rows.
std::string copied_section(const EditorModel& model, const std::string& name,
                           std::span<const unsigned> controllers);

// In one step.  The text of a whole program is taken as well: of it, these controllers.  Empty, or
// why it could not be done.
std::string paste_section(EditorModel& model, const std::string& name,
                          std::span<const unsigned> controllers, const std::string& text);

// What such a text calls its part; empty for another text.
std::string section_of_text(std::string_view text);

} // namespace tarquil
