// UTF-8: where characters begin and end, and which they are.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarquil {

// Whether the byte goes on with a character that an earlier one has begun.
constexpr bool is_utf8_continuation(char c) {
    return (uint8_t(c) & 0xC0U) == 0x80U;
}

// The length of the well-formed character at the start of `text`, which is not empty; 0 when there
// is none.
size_t utf8_length(std::string_view text);

// How many characters begin in `text`.
size_t utf8_count(std::string_view text);

// The code point of the well-formed character of `length` bytes at the start of `text`.
char32_t utf8_code_point(std::string_view text, size_t length);

// As much of `text` as `max_bytes` hold without cutting a character.  What is no UTF-8 is cut where
// the room ends.
std::string_view utf8_prefix(std::string_view text, size_t max_bytes);

} // namespace tarquil
