// Text from files, made fit to be drawn.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarquil {

// Well-formed UTF-8 without control characters: what is neither becomes U+FFFD.  What goes beyond
// `max_length` characters is cut and shows as "...".
std::string printable_text(std::string_view text, size_t max_length);

} // namespace tarquil
