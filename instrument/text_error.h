// What is wrong with a file in the key/value text.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Error codes of loads.
inline constexpr int CANNOT_OPEN = 1;
inline constexpr int ODD_HEX_LENGTH = 2;
inline constexpr int BROKEN_LINE = 6;
inline constexpr int WRONG_KIND = 7;    // no key of what was wanted
inline constexpr int NEWER_VERSION = 8; // a state that a later version has saved

// "line 3: no \"=\" with a value after it" for the first line that is broken by the rules of
// TextFileReader; empty when there is none.
std::string explain_broken_line(std::string_view text);

} // namespace tarquil
