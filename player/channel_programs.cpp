// The line of a saved state that says which program each channel plays.

#include "player/channel_programs.h"

#include <charconv>

#include "instrument/keys.h"
#include "instrument/settings.h"

namespace tarquil {

namespace {

std::string start_of_line() {
    return std::string(CHANNEL_PROGRAMS_KEY) + " = ";
}

} // namespace

ChannelPrograms usual_channel_programs() {
    ChannelPrograms programs{};
    for (unsigned channel = 0; channel < programs.size(); channel++)
        programs[channel] = uint8_t(channel);
    return programs;
}

std::string channel_programs_line(const ChannelPrograms& programs) {
    std::string line = start_of_line();
    for (const unsigned program : programs)
        line += std::to_string(program) + " ";
    line.back() = '\n';
    return line;
}

ChannelPrograms find_channel_programs(std::string_view text) {
    ChannelPrograms programs = usual_channel_programs();
    const std::string start = start_of_line();
    const size_t line = text.rfind(start);
    if (line == std::string_view::npos || (line > 0 && text[line - 1] != '\n'))
        return programs;
    const char* next = text.data() + line + start.size();
    const char* const end = text.data() + text.size();
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

} // namespace tarquil
