// How a byte for every controller becomes key/value text and back.

#pragma once

#include <span>
#include <string_view>

#include "instrument/load_report.h"
#include "instrument/text_file_memory_writer.h"
#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

// Writes the mapped float of each row's byte under the row's key.
void write_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                       const ControllerBytes& bytes);

// The same for those rows only whose byte is another than in `defaults`.
void write_changed_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                               const ControllerBytes& bytes, const ControllerBytes& defaults);

// What a load makes of keys that are not there: they take their defaults either way.
enum class MissingKeys { REPORTED, EXPECTED };

// The values that a text has for the channel's rows or for the global ones, taken line by line.
class ControllerValues {
  public:
    // `for_rows` are those of one scope.
    explicit ControllerValues(std::span<const ControllerInfo> for_rows) : rows(for_rows) {}

    // False when the key is not one of the rows'.  The first of equal keys counts.  Keeps a view of
    // the value.
    bool take(std::string_view key, std::string_view value);

    // Sets the byte of each row whose key was taken; the others keep theirs.
    void apply(ControllerBytes& bytes, MissingKeys missing, LoadReport* report) const;

  private:
    std::span<const ControllerInfo> rows;
    std::array<std::string_view, NUM_CHANNEL_CONTROLLERS> values; // empty: not taken
    size_t expected = 0;                                          // files have their keys in order
};

static_assert(NUM_GLOBAL_CONTROLLERS <= NUM_CHANNEL_CONTROLLERS);

} // namespace tarquil
