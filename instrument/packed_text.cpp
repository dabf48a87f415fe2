// The text of an instrument in few characters, as a saved state has it.

#include "instrument/packed_text.h"

#include <algorithm>
#include <span>

#include "common/load_string.h"
#include "instrument/text_error.h"
#include "instrument/text_file_memory_writer.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

constexpr char END_OF_PAIRS = ';';
constexpr char ESCAPE = '%';
constexpr size_t ESCAPE_DIGITS = 2;
constexpr unsigned MAX_BYTE = 127;

bool is_escaped(char c) {
    return uint8_t(c) < ' ' || c == ESCAPE || c == '#' || c == '/';
}

const ControllerInfo* find_row(unsigned number) {
    const std::span<const ControllerInfo> rows = channel_controller_rows();
    const auto row = std::ranges::find(rows, number, &ControllerInfo::number);
    return row != rows.end() ? &*row : nullptr;
}

int unpack_pairs(std::string_view digits, TextFileMemoryWriter& writer) {
    std::string pairs;
    if (const int error = hex2str(digits, pairs))
        return error;
    if (pairs.size() % 2 != 0)
        return BROKEN_LINE;
    for (size_t i = 0; i < pairs.size(); i += 2) {
        const ControllerInfo* const row = find_row(uint8_t(pairs[i]));
        const uint8_t byte = uint8_t(pairs[i + 1]);
        if (row == nullptr || byte > MAX_BYTE)
            return BROKEN_LINE;
        writer.write_float(row->key, map_char_to_float(row->number, byte));
    }
    return 0;
}

int unpack_lines(std::string_view lines, std::string& text) {
    while (!lines.empty()) {
        const size_t plain = std::min(lines.find(ESCAPE), lines.size());
        text += lines.substr(0, plain);
        lines.remove_prefix(plain);
        if (lines.empty())
            break;
        std::string character;
        if (const int error = hex2str(lines.substr(1, ESCAPE_DIGITS), character))
            return error;
        if (character.empty())
            return ODD_HEX_LENGTH;
        text += character;
        lines.remove_prefix(1 + ESCAPE_DIGITS);
    }
    return 0;
}

} // namespace

std::string pack_text(const ControllerBytes& bytes, const ControllerBytes& defaults,
                      std::string_view lines) {
    std::string packed;
    for (const ControllerInfo& row : channel_controller_rows()) {
        const char pair[] = {char(row.number), char(bytes[row.number])};
        if (bytes[row.number] != defaults[row.number])
            append_hex(packed, {pair, std::size(pair)});
    }
    packed += END_OF_PAIRS;
    for (const char& c : lines) {
        if (!is_escaped(c)) {
            packed += c;
            continue;
        }
        packed += ESCAPE;
        append_hex(packed, {&c, 1});
    }
    return packed;
}

int unpack_text(std::string_view packed, std::string& text) {
    text.clear();
    const size_t end = packed.find(END_OF_PAIRS);
    if (end == std::string_view::npos)
        return BROKEN_LINE;
    TextFileMemoryWriter writer;
    if (const int error = unpack_pairs(packed.substr(0, end), writer))
        return error;
    text = writer.take_string();
    return unpack_lines(packed.substr(end + 1), text);
}

} // namespace tarquil
