// The serial number of an Ogg stream.
//
// The encoder draws a random one for every file.  A fixed one makes equal sounds equal files.
// Source of the page layout and its checksum: RFC 3533.

#pragma once

#include <cstdint>

namespace tarquil {

inline constexpr uint32_t OGG_SERIAL = 1;

// Rewrites the serial number and the checksum of every page of the one stream that the file behind
// `descriptor` (open for reading and writing) holds.  What is not a page ends the walk.  False,
// with `errno`, when the file cannot be read or written.
bool set_ogg_serial(int descriptor, uint32_t serial);

} // namespace tarquil
