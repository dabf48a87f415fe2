// A file without a name, for contents that are on their way elsewhere.

#pragma once

#include <string>

namespace tarquil {

// Open for reading and writing, in $TMPDIR or /tmp, gone when it is closed.  -1 and errno when
// there can be none; `name` becomes the place that was tried.
int open_nameless_file(std::string& name);

} // namespace tarquil
