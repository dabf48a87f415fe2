// The phase increment of an oscillator.

#pragma once

#include <cmath>
#include <cstdint>

namespace tarquil {

// The increment for a pitch ratio; the phase wraps at 2^32, so the low 32 bits count.  Internal
// linkage, since kernels of every instruction set use it.
static inline uint32_t phase_increment(float pitch, float increment_scale) {
    return uint32_t(int64_t(lrintf(pitch * increment_scale)));
}

} // namespace tarquil
