// The random start phases of oscillator copies.

#include "softsynth/wavetables/phase_random.h"

namespace tarquil {

void PhaseRandom::seed(uint32_t start) {
    constexpr int64_t MULTIPLIER = 16807;
    constexpr int64_t MODULUS = 2147483647;
    constexpr unsigned WARM_UP = 10 * DEGREE; // numbers thrown away after seeding

    int64_t word = start == 0 ? 1 : int32_t(start);
    state[0] = uint32_t(word);
    for (unsigned i = 1; i < DEGREE; i++) {
        word = word * MULTIPLIER % MODULUS;
        if (word < 0)
            word += MODULUS;
        state[i] = uint32_t(word);
    }
    position = SEPARATION;
    for (unsigned i = 0; i < WARM_UP; i++)
        next();
}

} // namespace tarquil
