// Lines of an instrument or a bank beside those of its controllers.

#include "instrument/kept_lines.h"

#include <algorithm>

namespace tarquil {

void KeptLines::clear() {
    *this = KeptLines();
}

bool KeptLines::keep(std::string_view key, std::string_view value) {
    // Once full it stays so: a search among the lines for each of millions would take long.
    full = full || lines.size() >= MAX_LINES || num_bytes + key.size() + value.size() > MAX_BYTES;
    if (full)
        return false;
    if (get(key).empty()) {
        lines.emplace_back(key, value);
        num_bytes += key.size() + value.size();
    }
    return true;
}

std::string_view KeptLines::get(std::string_view key) const {
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&](const auto& other) { return other.first == key; });
    return line == lines.end() ? std::string_view() : line->second;
}

void KeptLines::set(std::string_view key, std::string_view value) {
    const auto line = std::find_if(lines.begin(), lines.end(),
                                   [&](const auto& other) { return other.first == key; });
    if (line == lines.end() && !value.empty())
        lines.emplace_back(key, value);
    else if (line != lines.end() && value.empty())
        lines.erase(line);
    else if (line != lines.end())
        line->second = value;
}

void KeptLines::write(TextFileMemoryWriter& writer) const {
    for (const auto& [key, value] : lines)
        writer.write_str(key, value);
}

} // namespace tarquil
