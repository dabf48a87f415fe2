// A hash of bytes, to compare long results by.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarquil {

// FNV-1a.
class ByteHash {
  public:
    void add(const void* bytes, size_t count) {
        for (const char byte : std::string_view(static_cast<const char*>(bytes), count))
            hash = (hash ^ uint8_t(byte)) * 0x100000001b3;
    }
    [[nodiscard]] uint64_t get() const { return hash; }

  private:
    uint64_t hash = 0xcbf29ce484222325;
};

} // namespace tarquil
