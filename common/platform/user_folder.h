// Where the user's programs keep their settings and caches.

#pragma once

#include <string>

namespace tarquil {

// The folder that the environment's `variable` names, else `below_home` in the user's home; empty
// when neither is there.  Only absolute paths count.
std::string user_folder(const char* variable, const char* below_home);

} // namespace tarquil
