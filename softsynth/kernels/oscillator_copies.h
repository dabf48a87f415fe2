// The copies of an oscillator group as its kernel sees them.

#pragma once

#include <cstdint>

namespace tarquil {

inline constexpr uint32_t MAX_OSCILLATOR_COPIES = 256;

// Arrays with an entry per copy.  The kernel writes, for every sample, the sum of
// table[phase >> table_shift] over the copies in order (starting with the first copy's sample, not
// with 0), and advances the phases; the pitch ratio is read at the first of every CONTROL_PERIOD
// samples, counted from the first.
struct OscillatorCopies {
    uint32_t* phase;              // one cycle is 2^32
    const float* increment_scale; // phase increment per sample for a pitch ratio of 1
    const float* const* table;
    uint32_t count; // 1..MAX_OSCILLATOR_COPIES
    uint32_t runs;  // of neighbouring copies with the same table
    uint32_t table_shift;
};

} // namespace tarquil
