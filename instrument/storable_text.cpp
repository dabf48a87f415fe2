// What of a text survives being saved.

#include "instrument/storable_text.h"

#include <algorithm>

#include "common/characters.h"

namespace tarquil {

std::string storable_text(std::string_view typed) {
    std::string text(trimmed(typed));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return is_control(c) || c == '#'; }, '_');
    return text;
}

std::string without_lone_blanks(const std::string& text) {
    return std::all_of(text.begin(), text.end(), is_white_space) ? "" : text;
}

} // namespace tarquil
