// Texts as VST 3 has them: UTF-16 in fixed room.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarquil::vst3 {

// Writes a UTF-8 text, cut between characters where the room (units, the closing zero among them)
// ends; what is no UTF-8 becomes a question mark.
void put_text(char16_t* out, size_t room, std::string_view text);
template <size_t room> void put_text(char16_t (&out)[room], std::string_view text) {
    put_text(out, room, text);
}
template <size_t room> void put_text(char (&out)[room], std::string_view text) {
    out[text.copy(out, room - 1)] = '\0';
}

// As UTF-8; at most `room` units are looked at.
std::string get_text(const char16_t* text, size_t room);

} // namespace tarquil::vst3
