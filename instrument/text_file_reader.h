// Reading of the key/value text that instruments, banks and saved states are stored in.
//
// One "key = value" pair per line; a "#" starts a comment; the first of several equal keys counts.
// Blanks before a key and after a value belong to it.  A byte order mark at the start is skipped.

#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tarquil {

class TextFileReader {
  public:
    // 0; 6 for a line that is not blank and has no "=" or nothing after it, which ends the load and
    // leaves the pairs before it.
    int load_from_string(std::string_view text);

    // The text that load_text_source finds; its errors, or those of load_from_string.
    int load_from_file(const std::string& path);

    // The value of `key`.  False, and `out` untouched, when there is none.
    bool get_str(std::string_view key, std::string& out) const;

    // The number that the value starts with; 0 when it starts with none.
    bool get_float(std::string_view key, float& out) const;

    // All keys and values, by key.
    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& get_pairs() const {
        return pairs;
    }

  private:
    std::map<std::string, std::string, std::less<>> pairs;
};

} // namespace tarquil
