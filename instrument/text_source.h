// Where the text of an instrument comes from.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Starts a file name that is the file itself, in hexadecimal digits.
inline constexpr std::string_view EMBEDDED_PREFIX = "hex:";

// The text of the regular file at `path`; or of the name itself when it starts with
// EMBEDDED_PREFIX, or packed when it starts with PACKED_PREFIX.  0; 1 cannot be opened; 2 read
// error or an odd number of digits; 3 not hexadecimal; 6 packed wrongly.
int load_text_source(const std::string& path, std::string& text);

} // namespace tarquil
