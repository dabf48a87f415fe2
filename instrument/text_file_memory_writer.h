// Writing of the key/value text into memory.

#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace tarquil {

// Nothing is escaped: a value with a line break or a "#" does not come back as it was.
class TextFileMemoryWriter {
  public:
    TextFileMemoryWriter() = default;

    // Writes into the memory of `buffer`, whose contents are lost.
    explicit TextFileMemoryWriter(std::string buffer) : text(std::move(buffer)) { text.clear(); }

    // Appends the line "KEY = VALUE"; numbers as "%f" and "%d" print them.
    void write_str(std::string_view key, std::string_view value);
    void write_float(std::string_view key, float value);
    void write_int(std::string_view key, int value);

    // A value that is `prefix` and then the hexadecimal digits of `value`.
    void write_hex(std::string_view key, std::string_view prefix, std::string_view value);

    // The text built so far.
    [[nodiscard]] const std::string& get_string() const { return text; }
    [[nodiscard]] std::string take_string() { return std::move(text); }

  private:
    std::string text;
};

} // namespace tarquil
