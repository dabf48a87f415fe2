// What a process has open, by its entries in /proc, and whether that grows.

#pragma once

#include <filesystem>

namespace tarquil {

// "fd": descriptors; "task": threads.
inline long count_process_entries(const char* kind) {
    const auto entries =
        std::filesystem::directory_iterator(std::filesystem::path("/proc/self") / kind);
    return std::distance(begin(entries), end(entries));
}

// Descriptors and threads after the first opening and closing of a window, which loads fonts that
// stay, and after the last one.
class GrowthCheck {
  public:
    void note_first() {
        descriptors = count_process_entries("fd");
        threads = count_process_entries("task");
    }
    // Null when nothing is left.
    [[nodiscard]] const char* find_growth() const {
        if (count_process_entries("fd") != descriptors)
            return "file descriptors are left open";
        if (count_process_entries("task") != threads)
            return "a thread is left";
        return nullptr;
    }

  private:
    long descriptors = 0;
    long threads = 0;
};

} // namespace tarquil
