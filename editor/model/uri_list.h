// What the desktop names dropped files by.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarquil {

// The files of this machine in a text of the type text/uri-list (RFC 2483): lines of
// "file:///with%20blanks" or "file://host/..."; comments and other addresses are passed over.
std::vector<std::string> files_of_uri_list(std::string_view text);

} // namespace tarquil
