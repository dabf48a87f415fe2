// The files that keep built wavetables between starts.

#include "softsynth/wavetables/waveform_cache.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "common/platform/atomic_file.h"

namespace tarquil {

namespace {

namespace fs = std::filesystem;

constexpr float LARGEST_SAMPLE = 2.0F;

// Empty without a folder.
fs::path cache_file(const std::string& folder, unsigned count, OscType type) {
    if (folder.empty())
        return {};
    return fs::path(folder) /
           ("wt" + std::to_string(count) + "-" + std::to_string(int(type)) + ".dat");
}

bool has_size(const fs::path& path, size_t bytes) {
    std::error_code error;
    return fs::is_regular_file(path, error) && fs::file_size(path, error) == bytes && !error;
}

bool is_plausible(const float* samples, size_t count) {
    // Magnitudes compare like their bits; those of infinity and NaN are the largest.
    uint32_t found = 0;
    for (size_t i = 0; i < count; i++) {
        const uint32_t magnitude = std::bit_cast<uint32_t>(samples[i]) & 0x7FFFFFFFU;
        found |= uint32_t(magnitude > std::bit_cast<uint32_t>(LARGEST_SAMPLE));
    }
    return found == 0;
}

// Straight to where the tables are used, in one call: a pass over them costs more than the file.
bool read_tables(int descriptor, const CachedTables& tables) {
    std::vector<iovec> rows(tables.count);
    for (unsigned k = 0; k < tables.count; k++)
        rows[k] = {tables.samples + k * tables.stride, tables.size * sizeof(float)};
    const auto bytes = ssize_t(tables.count * tables.size * sizeof(float));
    return readv(descriptor, rows.data(), int(rows.size())) == bytes;
}

// A second process never reads half a file: it gets its name only when it is complete.
void write_file(const fs::path& path, std::string_view bytes) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    AtomicFile file;
    if (!error && file.open(path.string()))
        file.commit(bytes, Durability::UNFLUSHED);
}

} // namespace

bool read_waveform_cache(const std::string& folder, OscType type, const CachedTables& tables) {
    const fs::path path = cache_file(folder, tables.count, type);
    if (path.empty() || !has_size(path, tables.count * tables.size * sizeof(float)))
        return false;
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool complete = read_tables(descriptor, tables);
    close(descriptor);
    for (unsigned k = 0; complete && k < tables.count; k++) {
        if (!is_plausible(tables.samples + k * tables.stride, tables.size))
            return false;
    }
    return complete;
}

void write_waveform_cache(const std::string& folder, OscType type, const CachedTables& tables) {
    const fs::path path = cache_file(folder, tables.count, type);
    if (path.empty())
        return;
    std::string bytes;
    bytes.reserve(tables.count * tables.size * sizeof(float));
    for (unsigned k = 0; k < tables.count; k++)
        bytes.append(reinterpret_cast<const char*>(tables.samples + k * tables.stride),
                     tables.size * sizeof(float));
    write_file(path, bytes);
}

void keep_empty_waveform_cache(const std::string& folder, unsigned count, OscType type,
                               unsigned num_floats) {
    const size_t bytes = num_floats * sizeof(float);
    const fs::path path = cache_file(folder, count, type);
    if (!path.empty() && !has_size(path, bytes))
        write_file(path, std::string(bytes, '\0'));
}

} // namespace tarquil
