// What of a text survives being saved.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// What a user types, as a saved file keeps it: without blanks at both ends, and "_" for line
// breaks, other control characters and the "#" that starts a comment.
std::string storable_text(std::string_view typed);

// A title or author as it was saved: an empty one comes back as the blank in front of it.
std::string without_lone_blanks(const std::string& text);

} // namespace tarquil
