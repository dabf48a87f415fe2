// Reading of the key/value text that instruments, banks and saved states are stored in.
//
// One "key = value" pair per line; a "#" starts a comment; the first of several equal keys counts.
// Blanks before a key and after a value belong to it.

#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tarquil {

// Starts a file name that is the file itself, in hexadecimal digits.
inline constexpr std::string_view EMBEDDED_PREFIX = "hex:";

class TextFileReader {
  public:
    // 0; 6 for a line that is not blank and has no "=" or nothing after it, which ends the load and
    // leaves the pairs before it.
    int load_from_string(std::string_view text);

    // The text of the regular file at `path`; or of the name itself when it starts with
    // EMBEDDED_PREFIX.  As load_from_string; 1 cannot be opened; 2 read error or an odd
    // number of digits; 3 not hexadecimal.
    int load_from_file(const std::string& path);

    // The value of `key`.  False, and `out` untouched, when there is none.
    bool get_str(std::string_view key, std::string& out) const;

    // All keys and values, by key.
    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& get_pairs() const {
        return pairs;
    }

    // The number that the value starts with; 0 when it starts with none.
    bool get_float(std::string_view key, float& out) const;

  private:
    int handle_line(unsigned line_number, std::string_view line);

    std::map<std::string, std::string, std::less<>> pairs;
};

} // namespace tarquil
