// What a text answers: the interfaces Text and EditableText of AT-SPI 2.

#include "editor/access/accessible_object.h"

#include <algorithm>

#include "common/utf8.h"

namespace tarquil {

namespace {

constexpr int CHARACTER = 0; // AtspiTextBoundaryType, and AtspiTextGranularity

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

// Whatever part of the text around a place is asked for, it is all of it: one line, of one look.
bool AccessibleObject::answer_text(const std::string& member, BusReader& arguments,
                                   BusWriter& answer) {
    const std::string& text = node->spoken->text;
    const int length = int(utf8_count(text));
    const auto integer = [&](int otherwise = 0) { return arguments.integer().value_or(otherwise); };
    const auto part = [&](int from, int to) {
        const int start = std::clamp(from, 0, length);
        const int end = std::clamp(to, start, length);
        answer.text(characters(text, start, end)).integer(start).integer(end);
    };
    // From a place on, or up to it.
    const auto beside = [&](int step) {
        const int at = integer();
        const bool is_character = arguments.integer().value_or(CHARACTER) == CHARACTER;
        is_character ? part(at + step, at + step + 1) : part(0, 0);
    };
    if (member == "GetText") {
        const int from = integer();
        const int to = integer(-1);
        answer.text(characters(text, from, to < 0 ? length : to));
    } else if (member == "GetCharacterAtOffset") {
        const int at = integer();
        const std::string one = characters(text, at, at + 1);
        answer.integer(one.empty() ? 0 : int(utf8_code_point(one, one.size())));
    } else if (member == "GetStringAtOffset" || member == "GetTextAtOffset") {
        const int at = integer();
        const bool is_character = arguments.integer().value_or(CHARACTER) == CHARACTER;
        is_character ? part(at, at + 1) : part(0, length);
    } else if (member == "GetTextBeforeOffset") {
        beside(-1);
    } else if (member == "GetTextAfterOffset") {
        beside(1);
    } else if (member == "GetNSelections") {
        answer.integer(0);
    } else if (member == "GetSelection") {
        answer.integer(0).integer(0);
    } else if (member == "SetCaretOffset" || member == "AddSelection" ||
               member == "RemoveSelection" || member == "SetSelection") {
        answer.boolean(false);
    } else if (member == "GetAttributeValue") {
        answer.text("");
    } else if (member == "GetAttributes" || member == "GetAttributeRun") {
        answer.array("{ss}", [](BusWriter&) {});
        answer.integer(0).integer(length);
    } else if (member == "GetDefaultAttributes" || member == "GetDefaultAttributeSet") {
        answer.array("{ss}", [](BusWriter&) {});
    } else {
        return node->spoken->type && answer_editable_text(member, arguments, answer);
    }
    return true;
}

bool AccessibleObject::answer_editable_text(const std::string& member, BusReader& arguments,
                                            BusWriter& answer) {
    const std::string& text = node->spoken->text;
    const int length = int(utf8_count(text));
    std::string wanted;
    if (member == "SetTextContents") {
        wanted = arguments.text().value_or("");
    } else if (member == "InsertText") {
        const int at = std::clamp(arguments.integer().value_or(0), 0, length);
        wanted =
            characters(text, 0, at) + arguments.text().value_or("") + characters(text, at, length);
    } else if (member == "DeleteText") {
        const int from = std::clamp(arguments.integer().value_or(0), 0, length);
        const int to = arguments.integer().value_or(length);
        wanted = characters(text, 0, from) +
                 characters(text, to < 0 ? length : std::max(from, to), length);
    } else {
        return false;
    }
    bool is_taken = false;
    world.act([&is_taken, &wanted, type = node->spoken->type] { is_taken = type(wanted); });
    answer.boolean(is_taken);
    return true;
}

} // namespace tarquil
