// A file that one process at a time holds.

#include "common/platform/file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tarquil {

bool FileLock::take(const std::string& path) {
    release();
    constexpr mode_t OWNERS_ONLY = 0600;
    descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, OWNERS_ONLY);
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        release();
    return is_taken();
}

void FileLock::release() {
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

} // namespace tarquil
