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
#include "common/platform/nameless_file.h"

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

// Descriptors that cannot be flushed need not be.
bool flush(int descriptor) {
    return fsync(descriptor) == 0 || errno == EINVAL || errno == ENOSYS || errno == EROFS;
}

// A name is on disk when its folder is; where folders cannot be flushed there is nothing to do.
void flush_folder(const std::string& path) {
    const std::string folder = get_directory_from_filename(path);
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

bool copy_contents(int from, int to) {
    char chunk[65536];
    off_t position = 0;
    for (;;) {
        const ssize_t count = pread(from, chunk, sizeof(chunk), position);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0;
        if (!write_all(to, {chunk, size_t(count)}))
            return false;
        position += count;
    }
}

} // namespace

AtomicFile::~AtomicFile() {
    if (descriptor >= 0)
        discard();
}

bool AtomicFile::open(const std::string& path) {
    TARQ_ASSERT(descriptor < 0);
    errno = ENOENT; // of an empty path
    const bool good = !path.empty() && open_target(path);
    problem = good ? 0 : errno;
    return good;
}

bool AtomicFile::open_target(const std::string& path) {
    struct stat info {};
    const bool exists = stat(path.c_str(), &info) == 0;
    if (exists && (!S_ISREG(info.st_mode) || is_system_path(path)))
        return open_directly(path);
    if (exists && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        return false;
    target = follow_links(path);
    way = Way::RENAME;
    if (!open_temporary(NEW_FILE_MODE))
        return exists && open_nameless();
    if (exists && fchmod(descriptor, info.st_mode & PERMISSION_BITS) != 0) {
        const int reason = errno;
        discard();
        errno = reason;
        return false;
    }
    return true;
}

bool AtomicFile::open_directly(const std::string& path) {
    descriptor = ::open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY);
    temporary.clear();
    way = Way::DIRECT;
    return descriptor >= 0;
}

bool AtomicFile::open_nameless() {
    std::string ignored;
    descriptor = open_nameless_file(ignored);
    temporary.clear();
    way = Way::IN_PLACE;
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

bool AtomicFile::commit(std::string_view text, Durability durability) {
    TARQ_ASSERT(descriptor >= 0);
    const bool flushed = durability == Durability::FLUSHED && way == Way::RENAME;
    bool good = write_all(descriptor, text) && (!flushed || flush(descriptor)) &&
                (way == Way::DIRECT || replace());
    problem = good ? 0 : errno;
    if (close(descriptor) != 0 && good) {
        problem = errno;
        good = false;
    }
    descriptor = -1;
    if (!good && !temporary.empty())
        unlink(temporary.c_str());
    if (good && flushed)
        flush_folder(target);
    return good;
}

bool AtomicFile::replace() {
    if (way == Way::RENAME && std::rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    if (!overwrite())
        return false;
    if (!temporary.empty())
        unlink(temporary.c_str());
    return true;
}

bool AtomicFile::overwrite() const {
    const int destination = ::open(target.c_str(), O_WRONLY | O_CLOEXEC);
    struct stat before {};
    struct stat wanted {};
    if (destination < 0)
        return false;
    bool good = fstat(destination, &before) == 0 && fstat(descriptor, &wanted) == 0;
    // A full disk shows here, while the old contents are still there.
    const int full = good && wanted.st_size > before.st_size
                         ? posix_fallocate(destination, 0, wanted.st_size)
                         : 0;
    if (full != 0) {
        good = false;
        static_cast<void>(ftruncate(destination, before.st_size) == 0);
        errno = full;
    }
    good = good && copy_contents(descriptor, destination) &&
           ftruncate(destination, wanted.st_size) == 0 && flush(destination);
    return close(destination) == 0 && good;
}

void AtomicFile::discard() {
    close(descriptor);
    descriptor = -1;
    if (!temporary.empty())
        unlink(temporary.c_str());
}

std::string in_place_warning(const std::string& path) {
    return path + ": its folder takes no new files, so it is overwritten where it is; the old "
                  "contents are lost if the machine stops now";
}

} // namespace tarquil
