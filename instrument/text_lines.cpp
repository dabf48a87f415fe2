// The lines of the key/value text.

#include "instrument/text_lines.h"

#include <algorithm>
#include <string>

#include "common/characters.h"
#include "common/log/log.h"
#include "instrument/text_error.h"

namespace tarquil {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

} // namespace

TextLines::TextLines(std::string_view whole_text) : text(whole_text) {
    if (text.starts_with(BYTE_ORDER_MARK))
        text.remove_prefix(BYTE_ORDER_MARK.size());
    carriage_return = text.find('\r');
}

bool TextLines::next() {
    if (ended)
        return false;
    line_number += counts ? 1 : 0;
    // Two searches for one character each are many times faster than one for either.
    if (carriage_return != std::string_view::npos && carriage_return < start)
        carriage_return = text.find('\r', start);
    const std::string_view before = text.substr(0, carriage_return);
    const size_t line_feed = before.find('\n', start);
    const size_t end = std::min(line_feed, carriage_return);
    counts = line_feed != std::string_view::npos;
    current = text.substr(start, std::min(end, text.size()) - start);
    ended = end == std::string_view::npos;
    start = ended ? text.size() : end + 1;
    return true;
}

TextPair parse_line(std::string_view line) {
    line = line.substr(0, line.find('#'));
    if (line.find_first_not_of(" \t\r") == std::string_view::npos)
        return {};
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals + 1 == line.size())
        return {LineKind::BROKEN, {}, {}};
    size_t key_end = equals;
    while (key_end > 0 && is_white_space(line[key_end - 1]))
        key_end--;
    size_t value_start = equals + 1;
    while (value_start + 1 < line.size() && is_white_space(line[value_start]))
        value_start++;
    return {LineKind::PAIR, line.substr(0, key_end), line.substr(value_start)};
}

int broken_line(const TextLines& lines) {
    const std::string_view line = lines.line().substr(0, lines.line().find('#'));
    logPrintf("line %u, broken line '%s'\n", lines.number(), std::string(line).c_str());
    return BROKEN_LINE;
}

} // namespace tarquil
