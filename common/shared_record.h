// A record that one thread writes and others read, neither of which waits.

#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <type_traits>

namespace tarquil {

// `Record` consists of 32-bit words.  A count that is odd while the words are being written tells
// readers of a record that is half new ("seqlock").
template <typename Record> class SharedRecord {
    static_assert(std::is_trivially_copyable_v<Record> && sizeof(Record) % sizeof(uint32_t) == 0);

  public:
    // For one thread at a time.
    void write(const Record& record) {
        const auto fresh = std::bit_cast<Words>(record);
        const uint32_t count = writes.load(std::memory_order_relaxed);
        writes.store(count + 1, std::memory_order_relaxed);
        for (size_t i = 0; i < fresh.size(); i++)
            words[i].store(fresh[i], std::memory_order_release); // not before the odd count
        writes.store(count + 2, std::memory_order_release);
    }

    // False, and `record` as it was, when it is being written again and again.
    bool read(Record& record) const {
        constexpr int MAX_TRIES = 4;
        for (int i = 0; i < MAX_TRIES; i++) {
            const uint32_t count = writes.load(std::memory_order_acquire);
            Words copy;
            for (size_t k = 0; k < copy.size(); k++)
                copy[k] = words[k].load(std::memory_order_acquire); // before the count
            if (count % 2 == 0 && writes.load(std::memory_order_relaxed) == count) {
                record = std::bit_cast<Record>(copy);
                return true;
            }
        }
        return false;
    }

  private:
    using Words = std::array<uint32_t, sizeof(Record) / sizeof(uint32_t)>;

    std::atomic<uint32_t> writes{0};
    std::array<std::atomic<uint32_t>, std::tuple_size_v<Words>> words{};
};

} // namespace tarquil
