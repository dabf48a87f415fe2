// A file that is replaced as a whole.

#include "common/platform/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "common/assertion.h"
#include "common/platform/file_system.h"

namespace tarquil {

namespace {

// More names than a folder that earlier crashes have littered holds.
constexpr int MAX_NAMES_TRIED = 1000;

constexpr mode_t PERMISSION_BITS = 0777;
constexpr mode_t NEW_FILE_MODE = 0666; // less the umask

// Where the system shows descriptors and devices as files: /dev/stdout may look like a regular one.
bool is_system_path(const std::string& path) {
    return path.starts_with("/dev/") || path.starts_with("/proc/");
}

// The file that `path` names after its links; `path` itself when it does not exist yet.
std::string follow_links(const std::string& path) {
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    const std::unique_ptr<char, Free> real(realpath(path.c_str(), nullptr));
    return real ? std::string(real.get()) : path;
}

bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        text.remove_prefix(size_t(written));
    }
    return true;
}

} // namespace

AtomicFile::~AtomicFile() {
    if (descriptor >= 0)
        discard();
}

bool AtomicFile::open(const std::string& path) {
    TARQ_ASSERT(descriptor < 0);
    if (path.empty())
        return false;
    struct stat info {};
    const bool exists = stat(path.c_str(), &info) == 0;
    if (exists && (!S_ISREG(info.st_mode) || is_system_path(path)))
        return open_directly(path);
    if (exists && access(path.c_str(), W_OK) != 0)
        return false;
    target = follow_links(path);
    if (!open_temporary(NEW_FILE_MODE))
        return false;
    if (exists && fchmod(descriptor, info.st_mode & PERMISSION_BITS) != 0) {
        discard();
        return false;
    }
    return true;
}

bool AtomicFile::open_directly(const std::string& path) {
    descriptor = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY);
    temporary.clear();
    return descriptor >= 0;
}

bool AtomicFile::open_temporary(unsigned mode) {
    static std::atomic<unsigned> last_number{0};
    const std::string folder = get_directory_from_filename(target);
    for (int tries = 0; tries < MAX_NAMES_TRIED; tries++) {
        temporary =
            folder + ".tarquil-" + std::to_string(getpid()) + "-" + std::to_string(++last_number);
        descriptor = ::open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0)
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool AtomicFile::commit(std::string_view text) {
    TARQ_ASSERT(descriptor >= 0);
    bool good = write_all(descriptor, text);
    good = close(descriptor) == 0 && good;
    descriptor = -1;
    if (temporary.empty())
        return good;
    good = good && std::rename(temporary.c_str(), target.c_str()) == 0;
    if (!good)
        unlink(temporary.c_str());
    return good;
}

void AtomicFile::discard() {
    close(descriptor);
    descriptor = -1;
    if (!temporary.empty())
        unlink(temporary.c_str());
}

} // namespace tarquil
