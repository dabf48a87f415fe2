// Texts as VST 3 has them: UTF-16 in fixed room.

#include "formats/vst3/text.h"

#include "common/utf8.h"

namespace tarquil::vst3 {

namespace {

constexpr char32_t FIRST_PAIR = 0x10000;
constexpr char32_t HIGH_START = 0xD800;
constexpr char32_t LOW_START = 0xDC00;
constexpr char32_t LOW_END = 0xE000;

void append(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += char(character);
        return;
    }
    const unsigned length = character < 0x800 ? 2 : character < FIRST_PAIR ? 3 : 4;
    text += char(uint8_t(0xF00U >> length) | uint8_t(character >> (6 * (length - 1))));
    for (unsigned i = length - 1; i > 0; i--)
        text += char(0x80U | (character >> (6 * (i - 1)) & 0x3FU));
}

} // namespace

void put_text(char16_t* out, size_t room, std::string_view text) {
    size_t count = 0;
    while (!text.empty()) {
        const size_t length = utf8_length(text);
        const char32_t character = length == 0 ? U'?' : utf8_code_point(text, length);
        const size_t units = character < FIRST_PAIR ? 1 : 2;
        if (count + units >= room)
            break;
        if (units == 1) {
            out[count] = char16_t(character);
        } else {
            out[count] = char16_t(HIGH_START + ((character - FIRST_PAIR) >> 10U));
            out[count + 1] = char16_t(LOW_START + ((character - FIRST_PAIR) & 0x3FFU));
        }
        count += units;
        text.remove_prefix(length == 0 ? 1 : length);
    }
    out[count] = 0;
}

std::string get_text(const char16_t* text, size_t room) {
    std::string out;
    for (size_t i = 0; i < room && text[i] != 0; i++) {
        char32_t character = text[i];
        if (character >= HIGH_START && character < LOW_START && i + 1 < room &&
            text[i + 1] >= LOW_START && text[i + 1] < LOW_END) {
            i++;
            character = FIRST_PAIR + ((character - HIGH_START) << 10U) + (text[i] - LOW_START);
        } else if (character >= HIGH_START && character < LOW_END) {
            character = U'?';
        }
        append(out, character);
    }
    return out;
}

} // namespace tarquil::vst3
