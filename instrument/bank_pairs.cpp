// The lines of a bank's text.

#include "instrument/bank_pairs.h"

#include <charconv>

#include "instrument/keys.h"

namespace tarquil {

namespace {

constexpr std::string_view NATIVE_VALUE = "native";
constexpr std::string_view OFF_VALUE = "off";

std::string_view without_blanks_at_end(std::string_view value) {
    const size_t last = value.find_last_not_of(" \t");
    return value.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

} // namespace

int BankPairs::read(std::string_view text, LoadReport* report) {
    for (TextLines lines(text); lines.next();) {
        const TextPair line = parse_line(lines.line());
        if (line.kind == LineKind::BROKEN)
            return broken_line(lines);
        if (line.kind == LineKind::BLANK || globals.take(line.key, line.value))
            continue;
        std::string_view* field = field_of(line.key);
        if (field == nullptr)
            take_other(line, report);
        else if (field->empty())
            *field = line.value;
    }
    return 0;
}

std::string_view* BankPairs::field_of(std::string_view key) {
    const int number = instrument_of_key(key);
    if (number >= 0)
        return &sources[size_t(number)];
    if (key == SONG_TITLE_KEY)
        return &title;
    if (key == SONG_AUTHOR_KEY)
        return &author;
    return key == STATE_VERSION_KEY ? &version : nullptr;
}

// A line that is not there when it says what is usual.
void BankPairs::take_switch(const TextPair& line, std::string_view usual, std::string_view other,
                            LoadReport* report) {
    const std::string_view value = without_blanks_at_end(line.value);
    if (value == usual)
        return;
    if (value != other)
        report_warning(report, std::string(line.key) + " = " + std::string(value) +
                                   " is not known, " + std::string(usual) + " is used");
    if (others.get(line.key).empty())
        others.set(line.key, value);
}

void BankPairs::take_other(const TextPair& line, LoadReport* report) {
    if (line.key == CHANNEL_PROGRAMS_KEY || line.key == EDITED_PROGRAM_KEY ||
        line.key == SELECTED_CHANNEL_KEY)
        return; // written and read by whoever has channels
    if (line.key == MIDI_KEY) {
        take_switch(line, NATIVE_VALUE, GENERAL_MIDI_VALUE, report);
        return;
    }
    if (line.key == TEMPO_SYNC_KEY) {
        take_switch(line, OFF_VALUE, ON_VALUE, report);
        return;
    }
    if (midi_controller_of_key(line.key)) {
        const std::string_view value = without_blanks_at_end(line.value);
        if (parse_learned(value)) {
            if (others.get(line.key).empty())
                others.set(line.key, value);
            return;
        }
        report_warning(report, std::string(line.key) + " = " + std::string(line.value) +
                                   " is not known, nothing is learned");
    }
    if (is_indented_key_of(TextKind::BANK, line.key))
        report_warning(report, "\"" + std::string(line.key) + "\" is indented and not read");
    if (!others.keep(line.key, line.value))
        report_warning(report, "more unknown lines than are kept");
}

bool BankPairs::is_known_version() const {
    int number = 0;
    std::from_chars(version.data(), version.data() + version.size(), number);
    return !is_compact() || (number >= 1 && number <= STATE_VERSION);
}

} // namespace tarquil
