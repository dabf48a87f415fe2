// Files that are written as a whole.

#include "common/platform/whole_file.h"

#include <cerrno>
#include <cstring>

#include "common/platform/atomic_file.h"
#include "common/platform/file_system.h"

namespace tarquil {

std::string write_whole_file(const std::string& path, std::string_view text) {
    AtomicFile file;
    if (file.open(path) && file.commit(text))
        return "";
    return path + ": cannot be written: " + explain_write_error(path, file.error());
}

std::string explain_write_error(const std::string& path, int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return "no space left";
    case EROFS:
        return "read-only disk";
    case EACCES:
    case EPERM:
        return is_regular_file(path) ? "read-only file" : "read-only folder";
    case ENOENT:
    case ENOTDIR:
        return "no such folder";
    case EISDIR:
        return "there is a folder of that name";
    case ENAMETOOLONG:
        return "the name is too long";
    default:
        return std::strerror(error);
    }
}

} // namespace tarquil
