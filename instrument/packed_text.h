// The text of an instrument in few characters, as a saved state has it.
//
// Four hexadecimal digits for each controller that has not its default, number and byte; ";"; the
// text's other lines.  What would end a line or a name, or begin a comment, stands as "%" and two
// hexadecimal digits.

#pragma once

#include <string>
#include <string_view>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// Starts a file name that is the file itself, packed.
inline constexpr std::string_view PACKED_PREFIX = "bytes:";

// Behind the prefix; `lines`: what is not a controller's.
std::string pack_text(const ControllerBytes& bytes, const ControllerBytes& defaults,
                      std::string_view lines);

// The text that was packed: at most 16 times as long.  0; 2 an odd number of digits; 3 not
// hexadecimal; 6 no ";", or a pair that is no controller's.
int unpack_text(std::string_view packed, std::string& text);

} // namespace tarquil
