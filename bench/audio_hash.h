// A hash of rendered samples, shown beside each time: the same bits, faster.

#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tarquil {

class AudioHash {
  public:
    // FNV-1a over the samples' bits.
    void add(const float* samples, size_t count) {
        for (size_t i = 0; i < count; i++) {
            uint32_t bits = 0;
            std::memcpy(&bits, &samples[i], sizeof bits);
            hash = (hash ^ bits) * 0x100000001b3;
        }
    }

    void label(benchmark::State& state) const {
        char text[32];
        std::snprintf(text, sizeof text, "hash %016llx", static_cast<unsigned long long>(hash));
        state.SetLabel(text);
    }

  private:
    uint64_t hash = 0xcbf29ce484222325;
};

} // namespace tarquil
