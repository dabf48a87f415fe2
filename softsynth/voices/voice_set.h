// A set of voices of the pool, by their place in it.

#pragma once

#include <bit>
#include <cstdint>

namespace tarquil {

class VoiceSet {
  public:
    static constexpr uint32_t MAX_VOICES = 128;

    void insert(uint32_t place) { words[place / WORD] |= bit(place); }
    void erase(uint32_t place) { words[place / WORD] &= ~bit(place); }
    void clear() { *this = VoiceSet(); }
    VoiceSet& operator|=(const VoiceSet& other) {
        for (uint32_t w = 0; w < NUM_WORDS; w++)
            words[w] |= other.words[w];
        return *this;
    }

    [[nodiscard]] bool any() const { return (words[0] | words[1]) != 0; }
    [[nodiscard]] int count() const { return std::popcount(words[0]) + std::popcount(words[1]); }

    // Calls act(place) in the pool's order, for what is in the set now.
    template <typename Act> void for_each(const Act& act) const {
        for (uint32_t w = 0; w < NUM_WORDS; w++) {
            for (uint64_t rest = words[w]; rest != 0; rest &= rest - 1)
                act(w * WORD + uint32_t(std::countr_zero(rest)));
        }
    }

  private:
    static constexpr uint32_t WORD = 64;
    static constexpr uint32_t NUM_WORDS = MAX_VOICES / WORD;

    static uint64_t bit(uint32_t place) { return uint64_t(1) << place % WORD; }

    uint64_t words[NUM_WORDS] = {};
};

} // namespace tarquil
