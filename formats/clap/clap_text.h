// Texts in a host's memory.

#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tarquil {

// Cut where the memory ends, always with a zero behind.
inline void copy_clap_text(char* memory, size_t size, std::string_view text) {
    if (size == 0)
        return;
    const size_t length = std::min(text.size(), size - 1);
    std::copy_n(text.begin(), length, memory);
    memory[length] = '\0';
}

template <size_t SIZE> void copy_clap_text(char (&memory)[SIZE], std::string_view text) {
    copy_clap_text(memory, SIZE, text);
}

} // namespace tarquil
