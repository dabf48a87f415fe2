// Files that are written as a whole, with the reason for people when that fails.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Replaces the file at `path`, or makes it.  Empty, or why that failed: "PATH: cannot be written:
// read-only folder"; the old contents are there then.
std::string write_whole_file(const std::string& path, std::string_view text);

// What `error`, an errno, means for a file that was to be written at `path`: "read-only folder",
// "no space left".
std::string explain_write_error(const std::string& path, int error);

} // namespace tarquil
