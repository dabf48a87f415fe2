// Kinds of characters and what is done with them, as the C locale has it, whatever locale the host
// has set.

#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarquil {

constexpr bool is_white_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool is_control(char c) {
    return uint8_t(c) < uint8_t(' ') || c == '\x7f';
}

// Of A to Z.
constexpr char lower_case(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

inline std::string lower_case(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return lower_case(c); });
    return text;
}

// Without the white space in front, and without that at both ends.
constexpr std::string_view trimmed_start(std::string_view text) {
    while (!text.empty() && is_white_space(text.front()))
        text.remove_prefix(1);
    return text;
}
constexpr std::string_view trimmed(std::string_view text) {
    text = trimmed_start(text);
    while (!text.empty() && is_white_space(text.back()))
        text.remove_suffix(1);
    return text;
}

} // namespace tarquil
