// Finding and removing samples that are not finite, and finding silence.

#include "softsynth/signal/finite.h"

#include <bit>

namespace tarquil {

namespace {

constexpr uint32_t MAGNITUDE_BITS = 0x7FFFFFFF;
constexpr uint32_t INFINITY_BITS = 0x7F800000; // infinity and every NaN are at or above it

// Sound is told from silence within the first samples, looked at so many at a time.
constexpr uint32_t PIECE = 32;

} // namespace

bool all_finite(const float* samples, uint32_t count) {
    // The integer compare vectorises and reads each sample once.
    uint32_t found = 0;
    for (uint32_t i = 0; i < count; i++)
        found |= uint32_t((std::bit_cast<uint32_t>(samples[i]) & MAGNITUDE_BITS) >= INFINITY_BITS);
    return found == 0;
}

bool all_zero(const float* samples, uint32_t count) {
    const auto is_zero = [](const float* first, uint32_t length) {
        uint32_t found = 0;
        for (uint32_t i = 0; i < length; i++)
            found |= std::bit_cast<uint32_t>(first[i]);
        return found == 0;
    };
    uint32_t i = 0;
    for (; i + PIECE <= count; i += PIECE) {
        if (!is_zero(samples + i, PIECE))
            return false;
    }
    return is_zero(samples + i, count - i);
}

bool scrub_non_finite(float* samples, uint32_t count) {
    if (all_finite(samples, count))
        return false;
    for (uint32_t i = 0; i < count; i++) {
        if ((std::bit_cast<uint32_t>(samples[i]) & MAGNITUDE_BITS) >= INFINITY_BITS)
            samples[i] = 0.0F;
    }
    return true;
}

} // namespace tarquil
