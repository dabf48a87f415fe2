// Where the user's programs keep their settings and caches.

#include "common/platform/user_folder.h"

#include <cstdlib>

namespace tarquil {

namespace {

std::string absolute_path(const char* variable) {
    const char* path = std::getenv(variable);
    return path != nullptr && path[0] == '/' ? path : "";
}

} // namespace

std::string user_folder(const char* variable, const char* below_home) {
    std::string folder = absolute_path(variable);
    if (!folder.empty())
        return folder;
    const std::string home = absolute_path("HOME");
    return home.empty() ? "" : home + "/" + below_home;
}

} // namespace tarquil
