// Whole files and hexadecimal text to and from strings.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// Reads the file at `path` into `out`, whose old contents are lost.  0; 1 cannot be opened; 2 read
// error, or a file that never ends (it stops at 64 MiB).  Waits for the writer of a pipe.
int load_file_to_string(const std::string& path, std::string& out);

// The same for a name that a file and not the user gave: a directory, a pipe or a device cannot be
// opened (1).
int load_regular_file_to_string(const std::string& path, std::string& out);

// The reason of their error 1 or 2.
std::string explain_file_error(int code);

// Replaces the file at `path` by `text` as a whole.  0; 1 cannot be opened for writing; 2 the text
// could not be written, and the old file is as it was.
int save_file_to_string(const std::string& path, std::string_view text);

// Two lowercase hexadecimal digits for each byte.
std::string str2hex(std::string_view text);
void append_hex(std::string& out, std::string_view text);

// The inverse.  0; 2 odd length; 3 a pair is not hexadecimal.  A pair is read as `scanf`'s "%x"
// reads it, so a blank or a sign and one digit count, and one digit and anything.
int hex2str(std::string_view hex, std::string& out);

} // namespace tarquil
