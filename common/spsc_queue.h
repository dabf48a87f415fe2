// A queue between two threads that never wait for each other: one writes, one reads.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace tarquil {

// Fixed memory.  At any time at most one thread may push and at most one may pop.
template <typename T, uint32_t CAPACITY> class SpscQueue {
    static_assert((CAPACITY & (CAPACITY - 1)) == 0, "indices wrap round");

  public:
    // False, and nothing is queued, when there is no room.
    bool push(const T& item) {
        const uint32_t end = written.load(std::memory_order_relaxed);
        if (end - taken.load(std::memory_order_acquire) == CAPACITY)
            return false;
        items[end % CAPACITY] = item;
        written.store(end + 1, std::memory_order_release);
        return true;
    }

    // False when there is nothing.
    bool pop(T& item) {
        const uint32_t first = taken.load(std::memory_order_relaxed);
        if (first == written.load(std::memory_order_acquire))
            return false;
        item = items[first % CAPACITY];
        taken.store(first + 1, std::memory_order_release);
        return true;
    }

    // At least as many as this can be popped; for the reader.
    [[nodiscard]] uint32_t size() const {
        return written.load(std::memory_order_acquire) - taken.load(std::memory_order_relaxed);
    }

  private:
    std::array<T, CAPACITY> items{};
    alignas(64) std::atomic<uint32_t> written{0}; // a cache line each
    alignas(64) std::atomic<uint32_t> taken{0};
};

} // namespace tarquil
