// Writing of the key/value text into memory.

#include "instrument/text_file_memory_writer.h"

#include "common/load_string.h"
#include "common/number_text.h"

namespace tarquil {

void TextFileMemoryWriter::write_str(std::string_view key, std::string_view value) {
    text += key;
    text += " = ";
    text += value;
    text += '\n';
}

void TextFileMemoryWriter::write_float(std::string_view key, float value) {
    text += key;
    text += " = ";
    append_number(text, double(value));
    text += '\n';
}

void TextFileMemoryWriter::write_hex(std::string_view key, std::string_view prefix,
                                     std::string_view value) {
    text += key;
    text += " = ";
    text += prefix;
    append_hex(text, value);
    text += '\n';
}

void TextFileMemoryWriter::write_int(std::string_view key, int value) {
    write_str(key, std::to_string(value));
}

} // namespace tarquil
