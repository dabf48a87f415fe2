// The directory image: a tree of files in memory, as saved states carry it.
//
// "MVFS", then records up to the end.  A record is a header of 264 bytes: "MDIR" or "MFIL", the
// path below the target directory (256 bytes, NUL-terminated), the file's length (32 bits,
// big-endian; ignored for a directory).  A file's bytes follow its header.  A directory comes
// before what is in it.

#pragma once

#include <string>

namespace tarquil {

// Whether the image of `length` bytes is whole: every header, name and file lies within it, and
// every name stays below the target directory.
bool directory_image_is_sound(const char* image, int length);

// Unpacks the image into the directory `target`.  0; 4 not an image; 234 unknown kind of record;
// 1234 a file cannot be created, which is also so for a path that is absolute, has a ".." or no
// NUL; 2734 nothing could be written to a file, or there is nothing to write; 43 a file could not
// be written whole; 1 the last header is cut off (what is missing of it counts as zeros).  What was
// unpacked before an error stays.  A file longer than the rest of the image asserts: look over
// foreign images with directory_image_is_sound first.
int memory_to_directory(const std::string& target, const char* image, int length);

} // namespace tarquil
