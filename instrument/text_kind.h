// Which kind of thing a text holds.

#pragma once

#include <string>
#include <string_view>

#include "instrument/keys.h"

namespace tarquil {

// Whether any line has a key of its own kind.
bool is_text_of(TextKind kind, std::string_view text);

// What a text that is not `wanted` is instead: "is a bank, not an instrument", "is empty".
std::string explain_wrong_kind(TextKind wanted, std::string_view text);

} // namespace tarquil
