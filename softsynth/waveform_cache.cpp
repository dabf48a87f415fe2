// The files that keep built wavetables between starts.

#include "softsynth/waveform_cache.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "common/atomic_file.h"
#include "softsynth/finite.h"

namespace {

namespace fs = std::filesystem;

constexpr float LARGEST_SAMPLE = 2.0F;

#if defined(MAP_POPULATE)
constexpr int MAP_FILE_PREFAULT = MAP_POPULATE;
#else
constexpr int MAP_FILE_PREFAULT = 0;
#endif

// Empty when the user has no home.
fs::path cache_directory() {
    const char* cache_home = std::getenv("XDG_CACHE_HOME");
    if (cache_home != nullptr && cache_home[0] == '/')
        return fs::path(cache_home) / "tarquil";
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] == '/')
        return fs::path(home) / ".cache" / "tarquil";
    return {};
}

fs::path cache_file(unsigned count, OscType type) {
    const fs::path directory = cache_directory();
    if (directory.empty())
        return {};
    return directory / ("wt" + std::to_string(count) + "-" + std::to_string(int(type)) + ".dat");
}

bool has_size(const fs::path& path, size_t bytes) {
    std::error_code error;
    return fs::is_regular_file(path, error) && fs::file_size(path, error) == bytes && !error;
}

bool is_plausible(const float* samples, size_t count) {
    return all_finite(samples, uint32_t(count)) &&
           std::all_of(samples, samples + count,
                       [](float sample) { return std::fabs(sample) <= LARGEST_SAMPLE; });
}

// A second process never reads half a file: it gets its name only when it is complete.
void write_file(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    AtomicFile file;
    if (!error && file.open(path.string()))
        file.commit(bytes);
}

} // namespace

CachedTables::CachedTables(unsigned count, OscType type, size_t num_floats)
    : num_bytes(num_floats * sizeof(float)) {
    const fs::path path = cache_file(count, type);
    if (path.empty() || !has_size(path, num_bytes))
        return;
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    // Read in one go; a fault per page would cost more than the reading.
    void* memory = mmap(nullptr, num_bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_FILE_PREFAULT,
                        descriptor, 0);
    close(descriptor);
    if (memory == MAP_FAILED)
        return;
    floats = static_cast<float*>(memory);
    if (!is_plausible(floats, num_floats))
        unmap();
}

CachedTables::~CachedTables() {
    unmap();
}

void CachedTables::unmap() {
    if (floats != nullptr)
        munmap(floats, num_bytes);
    floats = nullptr;
}

void write_waveform_cache(unsigned count, OscType type, const std::vector<float>& block) {
    const fs::path path = cache_file(count, type);
    if (!path.empty())
        write_file(path,
                   {reinterpret_cast<const char*>(block.data()), block.size() * sizeof(float)});
}

void keep_empty_waveform_cache(unsigned count, OscType type, unsigned num_floats) {
    const size_t bytes = num_floats * sizeof(float);
    const fs::path path = cache_file(count, type);
    if (!path.empty() && !has_size(path, bytes))
        write_file(path, std::string(bytes, '\0'));
}
