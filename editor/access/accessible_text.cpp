// What a text answers: the interfaces Text and EditableText of AT-SPI 2.

#include "editor/access/accessible_object.h"

#include <algorithm>

#include "common/utf8.h"

namespace tarquil {

namespace {

// The bytes of characters from..to of a text.
std::string characters(const std::string& text, int from, int to) {
    std::string part;
    int index = -1;
    for (const char c : text) {
        index += is_utf8_continuation(c) ? 0 : 1;
        if (index >= from && index < to)
            part += c;
    }
    return part;
}

} // namespace

// Whatever part of the text around a place is asked for, it is all of it: one line.
bool AccessibleObject::answer_text(const std::string& member, BusReader& arguments,
                                   BusWriter& answer) {
    const std::string& text = node->spoken->text;
    const int length = int(utf8_count(text));
    if (member == "GetText") {
        const int from = arguments.integer().value_or(0);
        const int to = arguments.integer().value_or(-1);
        answer.text(characters(text, from, to < 0 ? length : to));
    } else if (member == "GetCharacterAtOffset") {
        const int at = arguments.integer().value_or(0);
        const std::string one = characters(text, at, at + 1);
        answer.integer(one.empty() ? 0 : int(utf8_code_point(one, one.size())));
    } else if (member == "GetStringAtOffset" || member == "GetTextAtOffset") {
        const int at = arguments.integer().value_or(0);
        constexpr int CHARACTER = 0;
        if (arguments.integer().value_or(CHARACTER) == CHARACTER)
            answer.text(characters(text, at, at + 1)).integer(at).integer(std::min(at + 1, length));
        else
            answer.text(text).integer(0).integer(length);
    } else if (member == "GetNSelections") {
        answer.integer(0);
    } else if (member == "GetAttributes" || member == "GetDefaultAttributes") {
        answer.array("{ss}", [](BusWriter&) {});
        if (member == "GetAttributes")
            answer.integer(0).integer(length);
    } else if (member == "SetTextContents" && node->spoken->type) {
        bool is_taken = false;
        world.act([&is_taken, type = node->spoken->type, wanted = arguments.text().value_or("")] {
            is_taken = type(wanted);
        });
        answer.boolean(is_taken);
    } else {
        return false;
    }
    return true;
}

} // namespace tarquil
