// One byte for every controller number, and how a set of them becomes key/value text and back.

#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "instrument/load_report.h"
#include "instrument/text_file_memory_writer.h"
#include "instrument/text_file_reader.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

// Indexed by controller number; 0..127.
using ControllerBytes = std::array<uint8_t, NUM_CONTROLLERS>;

// The default of every controller, 0 for numbers without one.
const ControllerBytes& default_controller_bytes();

// Writes the mapped float of each row's byte under the row's key.
void write_controllers(TextFileMemoryWriter& writer, std::span<const ControllerInfo> rows,
                       const ControllerBytes& bytes);

// Sets the byte of each row whose key is there; the others keep theirs.
void read_controllers(const TextFileReader& reader, std::span<const ControllerInfo> rows,
                      ControllerBytes& bytes, LoadReport* report = nullptr);

} // namespace tarquil
