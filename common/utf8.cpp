// UTF-8: where characters begin and end, and which they are.

#include "common/utf8.h"

#include <algorithm>

namespace tarquil {

size_t utf8_length(std::string_view text) {
    const auto first = uint8_t(text[0]);
    const size_t length = first < 0x80                    ? 1
                          : first >= 0xC2 && first < 0xE0 ? 2
                          : first >= 0xE0 && first < 0xF0 ? 3
                          : first >= 0xF0 && first < 0xF5 ? 4
                                                          : 0;
    if (length == 0 || text.size() < length)
        return 0;
    for (size_t i = 1; i < length; i++) {
        if (!is_utf8_continuation(text[i]))
            return 0;
    }
    if (length < 3)
        return length;
    // Overlong forms, surrogates and what lies beyond the last code point.
    const auto second = uint8_t(text[1]);
    const bool bad = (first == 0xE0 && second < 0xA0) || (first == 0xED && second >= 0xA0) ||
                     (first == 0xF0 && second < 0x90) || (first == 0xF4 && second >= 0x90);
    return bad ? 0 : length;
}

size_t utf8_count(std::string_view text) {
    return size_t(
        std::count_if(text.begin(), text.end(), [](char c) { return !is_utf8_continuation(c); }));
}

char32_t utf8_code_point(std::string_view text, size_t length) {
    if (length == 1)
        return char32_t(uint8_t(text[0]));
    char32_t code_point = uint8_t(text[0]) & (0x7FU >> length);
    for (size_t i = 1; i < length; i++)
        code_point = code_point << 6U | (uint8_t(text[i]) & 0x3FU);
    return code_point;
}

std::string_view utf8_prefix(std::string_view text, size_t max_bytes) {
    if (text.size() <= max_bytes)
        return text;
    size_t start = max_bytes; // of the character that the cut would go through
    while (start > 0 && max_bytes - start < 3 && is_utf8_continuation(text[start]))
        start--;
    return text.substr(0, utf8_length(text.substr(start)) > max_bytes - start ? start : max_bytes);
}

} // namespace tarquil
