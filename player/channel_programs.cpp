// The lines of a saved state that say which program each channel plays and which one is edited.

#include "player/channel_programs.h"

#include <algorithm>
#include <charconv>

#include "instrument/keys.h"
#include "instrument/settings.h"

namespace tarquil {

namespace {

std::string start_of_line(std::string_view key) {
    return std::string(key) + " = ";
}

// What follows in the last line with this key, and all behind it; empty without one.
std::string_view find_line(std::string_view text, std::string_view key) {
    const std::string start = start_of_line(key);
    const size_t line = text.rfind(start);
    if (line == std::string_view::npos || (line > 0 && text[line - 1] != '\n'))
        return {};
    return text.substr(line + start.size());
}

// Less than `end`; nothing for a line that is not there or damaged.
std::optional<unsigned> find_number(std::string_view text, std::string_view key, unsigned end) {
    const std::string_view line = find_line(text, key);
    unsigned number = end;
    std::from_chars(line.data(), line.data() + line.size(), number);
    return number < end ? std::optional(number) : std::nullopt;
}

} // namespace

ChannelPrograms usual_channel_programs(MidiDialect dialect) {
    ChannelPrograms programs{};
    if (dialect == MidiDialect::GENERAL_MIDI)
        return programs;
    for (unsigned channel = 0; channel < programs.size(); channel++)
        programs[channel] = uint8_t(channel);
    return programs;
}

std::string channel_programs_line(const ChannelPrograms& programs) {
    std::string line = start_of_line(CHANNEL_PROGRAMS_KEY);
    for (const unsigned program : programs)
        line += std::to_string(program) + " ";
    line.back() = '\n';
    return line;
}

ChannelPrograms find_channel_programs(std::string_view text, MidiDialect dialect) {
    ChannelPrograms programs = usual_channel_programs(dialect);
    const std::string_view line = find_line(text, CHANNEL_PROGRAMS_KEY);
    const char* next = line.data();
    const char* const end = line.data() + line.size();
    for (uint8_t& channel : programs) {
        unsigned program = MAX_INSTRUMENTS;
        next = std::from_chars(next, end, program).ptr;
        if (program >= MAX_INSTRUMENTS)
            break; // damaged
        channel = uint8_t(program);
        if (next != end)
            next++;
    }
    return programs;
}

std::string edited_program_line(unsigned program) {
    return start_of_line(EDITED_PROGRAM_KEY) + std::to_string(program) + "\n";
}

std::optional<unsigned> find_edited_program(std::string_view text) {
    return find_number(text, EDITED_PROGRAM_KEY, MAX_INSTRUMENTS);
}

unsigned usual_selected_channel(const ChannelPrograms& programs, unsigned edited_program) {
    const auto* const found = std::find(programs.begin(), programs.end(), edited_program);
    return found == programs.end() ? 0 : unsigned(found - programs.begin());
}

std::string selected_channel_line(unsigned channel, const ChannelPrograms& programs,
                                  unsigned edited_program) {
    return channel == usual_selected_channel(programs, edited_program)
               ? ""
               : start_of_line(SELECTED_CHANNEL_KEY) + std::to_string(channel) + "\n";
}

std::optional<unsigned> find_selected_channel(std::string_view text) {
    return find_number(text, SELECTED_CHANNEL_KEY, unsigned(NUM_CHANNELS));
}

} // namespace tarquil
