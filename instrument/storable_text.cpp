// What of a text survives being saved.

#include "instrument/storable_text.h"

#include <algorithm>
#include <cstdint>

#include "common/white_space.h"

namespace tarquil {

std::string storable_text(std::string_view typed) {
    while (!typed.empty() && is_white_space(typed.front()))
        typed.remove_prefix(1);
    while (!typed.empty() && is_white_space(typed.back()))
        typed.remove_suffix(1);
    std::string text(typed);
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return uint8_t(c) < uint8_t(' ') || c == '\x7f' || c == '#'; }, '_');
    return text;
}

std::string without_lone_blanks(const std::string& text) {
    return std::all_of(text.begin(), text.end(), is_white_space) ? "" : text;
}

} // namespace tarquil
