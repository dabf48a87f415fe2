// What the desktop names dropped files by.

#include "editor/model/uri_list.h"

#include <algorithm>
#include <charconv>

namespace tarquil {

namespace {

// Empty where the text is damaged or names no file.
std::string percent_decoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); i++) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const std::string_view digits = text.substr(i + 1, 2);
        unsigned value = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        if (error != std::errc() || end != digits.data() + 2 || value == 0)
            return "";
        decoded += char(value);
        i += 2;
    }
    return decoded;
}

} // namespace

std::vector<std::string> files_of_uri_list(std::string_view text) {
    constexpr std::string_view SCHEME = "file://";
    std::vector<std::string> paths;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find_first_of("\r\n"));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!line.starts_with(SCHEME))
            continue;
        line.remove_prefix(SCHEME.size());
        line.remove_prefix(std::min(line.find('/'), line.size())); // a host's name
        std::string path = percent_decoded(line);
        if (!path.empty())
            paths.push_back(std::move(path));
    }
    return paths;
}

} // namespace tarquil
