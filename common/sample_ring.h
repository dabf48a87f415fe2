// The last stereo frames of a sound: one thread writes them, others look, neither waits.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>

namespace tarquil {

// `CAPACITY` in frames, a power of two; fixed memory.
template <uint32_t CAPACITY> class SampleRing {
    static_assert((CAPACITY & (CAPACITY - 1)) == 0, "indices wrap round");

  public:
    // For one thread at a time: interleaved frames.
    void write(std::span<const float> frames) {
        const uint32_t first = written.load(std::memory_order_relaxed);
        const auto count = uint32_t(frames.size() / 2);
        // A reader that overlaps sees by the announced end that its oldest frames are gone.
        announced.store(first + count, std::memory_order_relaxed);
        for (uint32_t i = 0; i < count; i++) {
            const uint32_t place = 2 * ((first + i) % CAPACITY);
            samples[place].store(frames[2 * i], std::memory_order_release);
            samples[place + 1].store(frames[2 * i + 1], std::memory_order_release);
        }
        written.store(first + count, std::memory_order_release);
    }

    // The last `left.size()` frames (less than CAPACITY).  False, and no sense in the samples, when
    // the writer has caught up meanwhile.
    bool read(std::span<float> left, std::span<float> right) const {
        const uint32_t end = written.load(std::memory_order_acquire);
        const uint32_t first = end - uint32_t(left.size());
        for (uint32_t i = 0; i < left.size(); i++) {
            const uint32_t place = 2 * ((first + i) % CAPACITY);
            left[i] = samples[place].load(std::memory_order_acquire);
            right[i] = samples[place + 1].load(std::memory_order_acquire);
        }
        return announced.load(std::memory_order_relaxed) - first <= CAPACITY;
    }

    // Frames so far; it wraps round.
    [[nodiscard]] uint32_t count() const { return written.load(std::memory_order_relaxed); }

  private:
    std::array<std::atomic<float>, size_t(2) * CAPACITY> samples{};
    std::atomic<uint32_t> announced{0};
    std::atomic<uint32_t> written{0};
};

} // namespace tarquil
