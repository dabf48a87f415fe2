// Text from files, made fit to be drawn.

#include "common/printable_text.h"

#include <cstdint>

#include "common/characters.h"
#include "common/utf8.h"

namespace tarquil {

namespace {

constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD"; // U+FFFD

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
