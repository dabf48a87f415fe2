// What learned MIDI controllers have moved and no host has been told of yet, without locks.

#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>

#include "softsynth/parameters/constants.h"

namespace tarquil {

class MovedControls {
  public:
    // `number` of a controller, 0..205; any thread.
    void note(unsigned number) {
        words[number / BITS].fetch_or(uint64_t(1) << number % BITS, std::memory_order_release);
    }

    // Calls use(number) for each that was noted since the last call; any thread, each note is one
    // caller's alone.
    template <typename Use> void take(const Use& use) {
        for (unsigned word = 0; word < words.size(); word++) {
            if (words[word].load(std::memory_order_relaxed) == 0)
                continue;
            uint64_t bits = words[word].exchange(0, std::memory_order_acquire);
            for (; bits != 0; bits &= bits - 1)
                use(word * BITS + unsigned(std::countr_zero(bits)));
        }
    }

  private:
    static constexpr unsigned BITS = 64;
    std::array<std::atomic<uint64_t>, (NUM_CONTROLLERS + BITS - 1) / BITS> words{};
};

} // namespace tarquil
