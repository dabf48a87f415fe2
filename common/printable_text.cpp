// Text from files, made fit to be drawn.

#include "common/printable_text.h"

#include <cstdint>

namespace tarquil {

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD"; // U+FFFD

// The length of the well-formed UTF-8 sequence at the start of `text`; 0 when there is none.
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
        if ((uint8_t(text[i]) & 0xC0U) != 0x80)
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

bool is_control(char c) {
    return uint8_t(c) < 0x20 || c == 0x7F;
}

} // namespace

std::string printable_text(std::string_view text, size_t max_length) {
    std::string result;
    size_t num_characters = 0;
    while (!text.empty()) {
        if (num_characters++ == max_length)
            return result + "...";
        const size_t length = utf8_length(text);
        if (length == 0 || is_control(text[0]))
            result += REPLACEMENT;
        else
            result += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

} // namespace tarquil
