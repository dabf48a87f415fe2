// Texts into buffers of the host.

#pragma once

#include <cstddef>
#include <string_view>

namespace tarquil {

// Copies as many whole characters of `text` (UTF-8) as fit into `room` bytes (at least 1) with the
// closing NUL.
void copy_host_text(char* buffer, std::string_view text, size_t room);

// `value` with `digits` digits after the point, in the C locale, cut to `room` bytes.
void float2string(float value, char* buffer, size_t room, int digits = 4);

} // namespace tarquil
