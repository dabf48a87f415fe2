// What a process has open, by its entries in /proc.

#pragma once

#include <filesystem>

namespace tarquil {

// "fd": descriptors; "task": threads.
inline long count_process_entries(const char* kind) {
    const auto entries =
        std::filesystem::directory_iterator(std::filesystem::path("/proc/self") / kind);
    return std::distance(begin(entries), end(entries));
}

} // namespace tarquil
