// Lines of an instrument or a bank beside those of its controllers: what is said about it, and what
// this version does not know and gives back as it was.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "instrument/text_file_memory_writer.h"

namespace tarquil {

class KeptLines {
  public:
    // Of what is not known; more is dropped.
    static constexpr size_t MAX_LINES = 256;
    static constexpr size_t MAX_BYTES = 16384;

    void clear();

    // Adds a line that was read, unless its key is there.  False when there is no room for it.
    bool keep(std::string_view key, std::string_view value);

    // The value of `key`, empty when there is none; an empty one takes the line away.
    [[nodiscard]] std::string_view get(std::string_view key) const;
    void set(std::string_view key, std::string_view value);

    // In the order in which they came.
    void write(TextFileMemoryWriter& writer) const;

    [[nodiscard]] bool empty() const { return lines.empty(); }
    bool operator==(const KeptLines&) const = default;

  private:
    std::vector<std::pair<std::string, std::string>> lines;
    size_t num_bytes = 0; // of lines that were kept
    bool full = false;
};

} // namespace tarquil
