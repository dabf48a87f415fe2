// The random start phases of oscillator copies.
//
// The C library's rand() with the same seed gives the same numbers, but it locks and is shared with
// the host.  Additive feedback generator r[i] = r[i - 3] + r[i - 31] mod 2^32 (BSD random(), after
// the trinomial x^31 + x^3 + 1), whose lowest bit is dropped; seeded by Park & Miller's generator.

#pragma once

#include <array>
#include <cstdint>

namespace tarquil {

class PhaseRandom {
  public:
    static constexpr uint32_t DEFAULT_SEED = 1;

    explicit PhaseRandom(uint32_t start = DEFAULT_SEED) { seed(start); }

    void seed(uint32_t start);

    // 0 .. 2^31 - 1
    uint32_t next() {
        // The oldest entry, r[i - 31], makes room for the newest.
        const unsigned recent =
            position >= SEPARATION ? position - SEPARATION : position + DEGREE - SEPARATION;
        const uint32_t sum = state[position] + state[recent];
        state[position] = sum;
        position = position + 1 == DEGREE ? 0 : position + 1;
        return sum >> 1U;
    }

  private:
    static constexpr unsigned DEGREE = 31;
    static constexpr unsigned SEPARATION = 3;

    std::array<uint32_t, DEGREE> state{};
    unsigned position = 0;
};

} // namespace tarquil
