// Paths, temporary directories, directory walking and recursive removal.

#include "common/platform/file_system.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "common/assertion.h"

namespace tarquil {

namespace {

constexpr int CANNOT_OPEN_DIRECTORY = 100;

constexpr char TEMP_TEMPLATE[] = "/tmp/TqLXXXXXX";

} // namespace

std::string concat_paths(const std::string& a, const std::string& b) {
    if (a.empty())
        return b;
    return a.back() == '/' ? a + b : a + "/" + b;
}

std::string get_directory_from_filename(const std::string& path, unsigned* pos) {
    const size_t slash = path.rfind('/');
    if (pos != nullptr)
        *pos = slash == std::string::npos ? unsigned(-1) : unsigned(slash);
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

const char* mktempdir() {
    static thread_local char name[sizeof(TEMP_TEMPLATE)];
    std::memcpy(name, TEMP_TEMPLATE, sizeof(TEMP_TEMPLATE));
    return mkdtemp(name);
}

bool is_directory(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool is_regular_file(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

const char* find_first_file(const std::string& path, DIR*& handle, dirent*& entry) {
    entry = nullptr;
    handle = opendir(path.c_str());
    return handle == FS_INVALID_HANDLE ? nullptr : ".";
}

const char* find_next_file(DIR* handle, dirent*& entry) {
    entry = readdir(handle);
    return entry == nullptr ? nullptr : entry->d_name;
}

void find_close(DIR* handle) {
    TARQ_ASSERT(handle != FS_INVALID_HANDLE);
    closedir(handle);
}

int recursive_remove(const std::string& path) {
    struct stat info {};
    const bool is_real_directory = lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    if (!is_real_directory) {
        unlink(path.c_str());
        return 0;
    }
    DIR* handle = FS_INVALID_HANDLE;
    dirent* entry = nullptr;
    const char* name = find_first_file(path, handle, entry);
    if (name == nullptr)
        return CANNOT_OPEN_DIRECTORY;
    for (; name != nullptr; name = find_next_file(handle, entry)) {
        const std::string_view view(name);
        if (view != "." && view != "..")
            recursive_remove(concat_paths(path, name));
    }
    find_close(handle);
    rmdir(path.c_str());
    return 0;
}

} // namespace tarquil
