// Why a bank or an instrument cannot be loaded, for people.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Why the load of a bank or an instrument from the text returned `code` (not 0): "is empty", "line
// 3: no \"=\" with a value after it".  Empty when the text is not to blame.
std::string explain_bank_text(int code, std::string_view text);
std::string explain_instrument_text(int code, std::string_view text);

// What the load of the bank at `path` that returned `code` (not 0) came up against:
// "PATH: line 3: no \"=\" with a value after it", "PATH: instrument5: an odd number of hex digits".
// Reads the file again.
std::string explain_bank_error(const std::string& path, int code);

// The same of an instrument.
std::string explain_instrument_error(const std::string& path, int code);

} // namespace tarquil
