// What is wrong with a file in the key/value text.

#include "instrument/text_error.h"

#include "instrument/text_lines.h"

namespace tarquil {

std::string explain_broken_line(std::string_view text) {
    for (TextLines lines(text); lines.next();) {
        if (parse_line(lines.line()).kind == LineKind::BROKEN)
            return "line " + std::to_string(lines.number()) + ": no \"=\" with a value after it";
    }
    return "";
}

} // namespace tarquil
