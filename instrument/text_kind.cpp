// Which kind of thing a text holds.

#include "instrument/text_kind.h"

#include <algorithm>
#include <cstdint>

#include "common/characters.h"
#include "instrument/text_lines.h"

namespace tarquil {

namespace {

template <typename Condition> bool has_key(std::string_view text, const Condition& condition) {
    for (TextLines lines(text); lines.next();) {
        const TextPair pair = parse_line(lines.line());
        if (pair.kind == LineKind::PAIR && condition(pair.key))
            return true;
    }
    return false;
}

bool is_blank(std::string_view text) {
    for (TextLines lines(text); lines.next();) {
        if (parse_line(lines.line()).kind != LineKind::BLANK)
            return false;
    }
    return true;
}

bool is_binary(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return uint8_t(c) < ' ' && !is_white_space(c); });
}

} // namespace

bool is_text_of(TextKind kind, std::string_view text) {
    return has_key(text, [=](std::string_view key) { return is_key_of(kind, key); });
}

std::string explain_wrong_kind(TextKind wanted, std::string_view text) {
    const bool bank_wanted = wanted == TextKind::BANK;
    if (is_blank(text))
        return "is empty";
    if (is_binary(text))
        return "is not a text";
    if (is_text_of(bank_wanted ? TextKind::INSTRUMENT : TextKind::BANK, text))
        return bank_wanted ? "is an instrument, not a bank" : "is a bank, not an instrument";
    if (has_key(text, [=](std::string_view key) { return is_indented_key_of(wanted, key); }))
        return "has indented keys, which are not read";
    return bank_wanted ? "has no key of a bank" : "has no key of an instrument";
}

} // namespace tarquil
