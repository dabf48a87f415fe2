// Reading of the key/value text.

#include "instrument/text_file_reader.h"

#include "common/load_string.h"
#include "common/log/log.h"
#include "common/number_text.h"
#include "common/white_space.h"

namespace tarquil {

namespace {

constexpr int BROKEN_LINE = 6;

} // namespace

int TextFileReader::load_from_string(std::string_view text) {
    unsigned line_number = 1;
    size_t start = 0;
    for (size_t end = text.find_first_of("\r\n"); end != std::string_view::npos;
         end = text.find_first_of("\r\n", start)) {
        const int error = handle_line(line_number, text.substr(start, end - start));
        if (error != 0)
            return error;
        if (text[end] == '\n')
            line_number++;
        start = end + 1;
    }
    return handle_line(line_number, text.substr(start));
}

int TextFileReader::load_from_file(const std::string& path) {
    std::string text;
    const bool embedded = path.starts_with(EMBEDDED_PREFIX);
    const int error = embedded
                          ? hex2str(std::string_view(path).substr(EMBEDDED_PREFIX.size()), text)
                          : load_regular_file_to_string(path, text);
    return error != 0 ? error : load_from_string(text);
}

bool TextFileReader::get_str(std::string_view key, std::string& out) const {
    const auto found = pairs.find(key);
    if (found == pairs.end())
        return false;
    out = found->second;
    return true;
}

bool TextFileReader::get_float(std::string_view key, float& out) const {
    const auto found = pairs.find(key);
    if (found == pairs.end())
        return false;
    out = float(text_to_number(found->second));
    return true;
}

int TextFileReader::handle_line(unsigned line_number, std::string_view line) {
    line = line.substr(0, line.find('#'));
    if (line.find_first_not_of(" \t\r") == std::string_view::npos)
        return 0;
    const size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals + 1 == line.size()) {
        logPrintf("line %u, broken line '%s'\n", line_number, std::string(line).c_str());
        return BROKEN_LINE;
    }
    size_t key_end = equals;
    while (key_end > 0 && is_white_space(line[key_end - 1]))
        key_end--;
    size_t value_start = equals + 1;
    while (value_start + 1 < line.size() && is_white_space(line[value_start]))
        value_start++;
    pairs.emplace(line.substr(0, key_end), line.substr(value_start));
    return 0;
}

} // namespace tarquil
