// The files that keep built wavetables between starts.

#include "softsynth/waveform_cache.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "common/atomic_file.h"

namespace {

namespace fs = std::filesystem;

constexpr float LARGEST_SAMPLE = 2.0F;

struct FileCloser {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

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

bool is_plausible(const std::vector<float>& block) {
    bool plausible = true;
    for (const float sample : block)
        plausible = plausible && std::fabs(sample) <= LARGEST_SAMPLE;
    return plausible;
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

bool read_waveform_cache(unsigned count, OscType type, std::vector<float>& block) {
    const fs::path path = cache_file(count, type);
    if (path.empty() || !has_size(path, block.size() * sizeof(float)))
        return false;
    const File file(std::fopen(path.c_str(), "rb"));
    return file &&
           std::fread(block.data(), sizeof(float), block.size(), file.get()) == block.size() &&
           is_plausible(block);
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
