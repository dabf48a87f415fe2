// The lines of the key/value text.

#pragma once

#include <string_view>

namespace tarquil {

// One line after the other.  A line ends at a carriage return or a line feed; a byte order mark at
// the start of the text is skipped.
class TextLines {
  public:
    explicit TextLines(std::string_view whole_text);

    // Goes on to the next line, at first to the first.  False at the end.
    bool next();

    [[nodiscard]] std::string_view line() const { return current; }

    // From 1; only line feeds count.
    [[nodiscard]] unsigned number() const { return line_number; }

  private:
    std::string_view text;
    size_t start = 0;           // of the next line
    size_t carriage_return = 0; // the first one from `start` on
    bool ended = false;
    bool counts = false; // whether the line ended in a line feed
    unsigned line_number = 1;
    std::string_view current;
};

enum class LineKind { BLANK, PAIR, BROKEN };

struct TextPair {
    LineKind kind = LineKind::BLANK;
    std::string_view key;
    std::string_view value; // at least one character
};

// "key = value", what stands behind a "#" left out.  Broken is what is not blank and has no "=" or
// nothing after it.
TextPair parse_line(std::string_view line);

// Puts the broken line into the log and returns its error code.
int broken_line(const TextLines& lines);

} // namespace tarquil
