// Reading of the key/value text.

#include "instrument/text_file_reader.h"

#include "common/number_text.h"
#include "instrument/text_lines.h"
#include "instrument/text_source.h"

namespace tarquil {

int TextFileReader::load_from_string(std::string_view text) {
    for (TextLines lines(text); lines.next();) {
        const TextPair pair = parse_line(lines.line());
        if (pair.kind == LineKind::BROKEN)
            return broken_line(lines);
        if (pair.kind == LineKind::PAIR)
            pairs.emplace(pair.key, pair.value);
    }
    return 0;
}

int TextFileReader::load_from_file(const std::string& path) {
    std::string text;
    const int error = load_text_source(path, text);
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

} // namespace tarquil
