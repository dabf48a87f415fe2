// Writing of the key/value text into memory.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Nothing is escaped: a value with a line break or a "#" does not come back as it was.
class TextFileMemoryWriter {
  public:
    // Appends the line "KEY = VALUE"; numbers as "%f" and "%d" print them.
    void write_str(std::string_view key, std::string_view value);
    void write_float(std::string_view key, float value);
    void write_int(std::string_view key, int value);

    // The text built so far.
    [[nodiscard]] const std::string& get_string() const { return text; }

  private:
    std::string text;
};

} // namespace tarquil
