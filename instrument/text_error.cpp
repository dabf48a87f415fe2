// What is wrong with a file in the key/value text.

#include "instrument/text_error.h"

#include "instrument/text_file_reader.h"

namespace tarquil {

std::string explain_broken_line(std::string_view text) {
    unsigned line_number = 1;
    while (!text.empty()) {
        // A line ends at either character, and only the line feed counts.
        const size_t end = text.find_first_of("\r\n");
        TextFileReader line;
        if (line.load_from_string(text.substr(0, end)) != 0)
            return "line " + std::to_string(line_number) + ": no \"=\" with a value after it";
        if (end == std::string_view::npos)
            break;
        if (text[end] == '\n')
            line_number++;
        text.remove_prefix(end + 1);
    }
    return "";
}

std::string explain_file_error(int code) {
    return code == CANNOT_OPEN ? "cannot be opened" : "cannot be read, or is larger than 64 MiB";
}

} // namespace tarquil
