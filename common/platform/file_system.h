// Paths, temporary directories, directory walking and recursive removal.

#pragma once

#include <dirent.h>

#include <string>

namespace tarquil {

// `b` below `a`, with one "/" between them; `b` alone when `a` is empty.
std::string concat_paths(const std::string& a, const std::string& b);

// The path up to and including its last "/", whose index goes to `*pos` when that is given; "./"
// and all ones when there is none.
std::string get_directory_from_filename(const std::string& path, unsigned* pos = nullptr);

// Creates an empty directory /tmp/TqLXXXXXX and returns its name, null on failure.  Every call
// overwrites the name that the thread's last one returned.
const char* mktempdir();

// True when the path, its links followed, is a directory or a regular file.
bool is_directory(const std::string& path);
bool is_regular_file(const std::string& path);

// What find_first_file leaves in `handle` when the directory cannot be opened.
inline constexpr DIR* FS_INVALID_HANDLE = nullptr;

// Opens the directory `path` and returns ".", the first name of every directory here; null when it
// cannot be opened.  The names that find_next_file returns, null at the end, are in the system's
// order, include "." and "..", and are valid until the next call.
const char* find_first_file(const std::string& path, DIR*& handle, dirent*& entry);
const char* find_next_file(DIR* handle, dirent*& entry);
void find_close(DIR* handle);

// Removes a file, or a directory with all that is in it; a link is removed, not followed.  0, or
// 100 when the directory cannot be opened; what cannot be removed stays without a report.
int recursive_remove(const std::string& path);

} // namespace tarquil
