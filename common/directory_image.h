// The directory image: a tree of files in memory, as saved states carry it.
//
// "MVFS", then records up to the end.  A record is a header of 264 bytes: "MDIR" or "MFIL", the
// path below the target directory (256 bytes, NUL-terminated), the file's length (32 bits,
// big-endian; ignored for a directory).  A file's bytes follow its header.  A directory comes
// before what is in it.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarquil {

// The contents that the file at the path `wanted` would have were the image unpacked.  Nothing when
// the image does not have it, or is damaged before its end: a name that leaves the target directory
// or a file that could not be made, is empty or longer than the image.  What lies behind the file
// may be anything.
std::optional<std::string_view> find_in_directory_image(std::string_view image,
                                                        std::string_view wanted);

// Unpacks the image into the directory `target`.  0; 4 not an image; 234 unknown kind of record;
// 1234 a file cannot be created, which is also so for a path that is absolute, has a ".." or no
// NUL; 2734 nothing could be written to a file, or there is nothing to write; 43 a file could not
// be written whole; 1 the last header is cut off (what is missing of it counts as zeros).  What was
// unpacked before an error stays.  A file longer than the rest of the image asserts: this is not
// for foreign images.
int memory_to_directory(const std::string& target, const char* image, int length);

} // namespace tarquil
