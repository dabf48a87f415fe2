// Printing of what a command found out.

#pragma once

#include <string_view>

namespace tarquil {

// Writes all of `text` to the descriptor `results`; a Failure when that can not be done.
void write_result(int results, std::string_view text);

} // namespace tarquil
