// The files that keep built wavetables between starts.

#include "softsynth/waveform_cache.h"

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

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

// A file in the making: it gets its name only when it is complete, so that a second process never
// reads half of it.
class NewCacheFile {
  public:
    explicit NewCacheFile(const fs::path& target) : final_path(target) {
        if (final_path.empty())
            return;
        std::error_code error;
        fs::create_directories(final_path.parent_path(), error);
        temporary = final_path.string() + ".XXXXXX";
        const int descriptor = mkstemp(temporary.data());
        if (descriptor >= 0)
            file.reset(fdopen(descriptor, "wb"));
    }

    [[nodiscard]] FILE* get() const { return file.get(); }

    void finish(bool complete) {
        if (!file)
            return;
        complete = std::fflush(file.get()) == 0 && complete;
        file.reset();
        std::error_code error;
        if (complete)
            fs::rename(temporary, final_path, error);
        if (!complete || error)
            fs::remove(temporary, error);
    }

  private:
    fs::path final_path;
    std::string temporary;
    File file;
};

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
    NewCacheFile file(cache_file(count, type));
    if (file.get() != nullptr)
        file.finish(std::fwrite(block.data(), sizeof(float), block.size(), file.get()) ==
                    block.size());
}

void keep_empty_waveform_cache(unsigned count, OscType type, unsigned num_floats) {
    const size_t bytes = num_floats * sizeof(float);
    const fs::path path = cache_file(count, type);
    if (path.empty() || has_size(path, bytes))
        return;
    NewCacheFile file(path);
    if (file.get() != nullptr)
        file.finish(ftruncate(fileno(file.get()), off_t(bytes)) == 0);
}
