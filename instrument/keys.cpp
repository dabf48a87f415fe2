// The keys of instruments and banks.

#include "instrument/keys.h"

#include <charconv>

#include "common/characters.h"
#include "instrument/controller_bytes.h"
#include "instrument/settings.h"

namespace tarquil {

namespace {

constexpr std::string_view INSTRUMENT_PREFIX = "instrument";

} // namespace

std::string instrument_key(unsigned number) {
    return std::string(INSTRUMENT_PREFIX) + std::to_string(number);
}

int instrument_of_key(std::string_view key) {
    if (!key.starts_with(INSTRUMENT_PREFIX))
        return -1;
    const std::string_view digits = key.substr(INSTRUMENT_PREFIX.size());
    unsigned number = 0;
    const std::from_chars_result read =
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool is_plain = digits == "0" || (!digits.empty() && digits.front() != '0');
    const bool is_whole = read.ec == std::errc() && read.ptr == digits.data() + digits.size();
    return is_plain && is_whole && number < MAX_INSTRUMENTS ? int(number) : -1;
}

bool is_key_of(TextKind kind, std::string_view key) {
    const ControllerInfo* info = find_controller_by_key(key);
    if (info != nullptr)
        return (info->scope == ControllerScope::CHANNEL) == (kind == TextKind::INSTRUMENT);
    if (kind == TextKind::INSTRUMENT)
        return key == NAME_KEY;
    return instrument_of_key(key) >= 0 || key == SONG_TITLE_KEY || key == SONG_AUTHOR_KEY ||
           key == STATE_VERSION_KEY;
}

bool is_indented_key_of(TextKind kind, std::string_view key) {
    const std::string_view unindented = trimmed_start(key);
    return unindented.size() < key.size() && is_key_of(kind, unindented);
}

} // namespace tarquil
