// Names and titles: the defaults, and what of a text survives being saved.

#include "instrument/names.h"

#include <algorithm>

#include "common/white_space.h"

namespace tarquil {

std::string default_instrument_name(unsigned number) {
    return "instrument_" + std::to_string(number);
}

void set_default_names(TarqSettings& bank) {
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        bank.get_instrument(i).set_name(default_instrument_name(i));
}

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

void remove_lone_blanks(TarqSettings& bank) {
    bank.set_song_title(without_lone_blanks(bank.get_song_title()));
    bank.set_song_author(without_lone_blanks(bank.get_song_author()));
}

} // namespace tarquil
