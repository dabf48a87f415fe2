// Parts of a sound as text.

#include "editor/model/section_text.h"

#include <algorithm>
#include <map>

#include "instrument/controller_bytes.h"
#include "instrument/text_lines.h"

namespace tarquil {

namespace {

constexpr std::string_view SECTION_KEY = "section";

// Controllers by what tells them apart.
using Numbers = std::map<std::string, unsigned>;

// Without the number of its envelope, oscillator or effect ("chanfx1b_type" is the second's).
std::string key_of_kind(std::string_view key) {
    constexpr std::string_view DIGITS = "0123456789";
    std::string kind(key);
    const size_t first = kind.find_first_of(DIGITS);
    if (first == std::string::npos)
        return kind;
    size_t end = std::min(kind.find_first_not_of(DIGITS, first), kind.size());
    if (kind.compare(end, 2, "b_") == 0)
        end++;
    return kind.erase(first, end - first);
}

// Empty where two would be the same.
Numbers of_kind(const Numbers& numbers) {
    Numbers kinds;
    for (const auto& [key, number] : numbers) {
        if (!kinds.emplace(key_of_kind(key), number).second)
            return {};
    }
    return kinds;
}

bool has_keys_of(const Numbers& numbers, const Numbers& wanted) {
    return std::all_of(wanted.begin(), wanted.end(),
                       [&](const auto& each) { return numbers.contains(each.first); });
}

// The controllers that a text has, and their bytes.
Numbers read_numbers(std::string_view text, ControllerBytes& bytes) {
    Numbers found;
    ControllerValues channel(channel_controller_rows());
    ControllerValues global(global_controller_rows());
    TextLines lines(text);
    while (lines.next()) {
        const TextPair pair = parse_line(lines.line());
        if (pair.kind != LineKind::PAIR)
            continue;
        if (channel.take(pair.key, pair.value) || global.take(pair.key, pair.value))
            found.emplace(pair.key, 0);
    }
    channel.apply(bytes, MissingKeys::EXPECTED, nullptr);
    global.apply(bytes, MissingKeys::EXPECTED, nullptr);
    for (const ControllerInfo& info : controller_rows()) {
        const auto place = found.find(info.key);
        if (place != found.end())
            place->second = info.number;
    }
    return found;
}

} // namespace

std::string copied_section(const EditorModel& model, const std::string& name,
                           std::span<const unsigned> controllers) {
    TextFileMemoryWriter writer;
    writer.write_str(SECTION_KEY, name);
    for (const unsigned number : controllers)
        write_controllers(writer, {find_controller(number), 1}, model.get_state().bytes);
    return writer.take_string();
}

std::string paste_section(EditorModel& model, const std::string& name,
                          std::span<const unsigned> controllers, const std::string& text) {
    ControllerBytes bytes{};
    Numbers from = read_numbers(text, bytes);
    if (from.empty())
        return "The clipboard holds no part of a sound";
    Numbers to;
    for (const unsigned number : controllers)
        to.emplace(find_controller(number)->key, number);
    if (!has_keys_of(from, to)) {
        from = of_kind(from);
        to = of_kind(to);
        if (to.empty() || from.size() != to.size() || !has_keys_of(from, to)) {
            const std::string held = section_of_text(text);
            return (held.empty() ? "What the clipboard holds" : held + " of the clipboard") +
                   " does not fit into " + name;
        }
    }
    model.begin_gesture("Paste " + name);
    for (const auto& [key, number] : to)
        model.set_value(number, bytes[from.at(key)]);
    model.end_gesture();
    return "";
}

std::string section_of_text(std::string_view text) {
    TextLines lines(text);
    while (lines.next()) {
        const TextPair pair = parse_line(lines.line());
        if (pair.kind == LineKind::PAIR)
            return pair.key == SECTION_KEY ? std::string(pair.value) : "";
    }
    return "";
}

} // namespace tarquil
