// The text in a saved state.

#pragma once

#include <optional>
#include <string_view>

namespace tarquil {

enum class StateKind { PROGRAM, BANK };

// Whether the bytes are a directory image, or were meant as one, rather than a text.
bool is_image_state(std::string_view bytes);

// The instrument's or the bank's text: the bytes themselves, or the file in an image that has it,
// "default.tqi" or "default.tqb".  Nothing when the image does not have it or is damaged.
std::optional<std::string_view> find_state_text(std::string_view bytes, StateKind kind);

} // namespace tarquil
