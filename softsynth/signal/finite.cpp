// Finding and removing samples that are not finite, and finding silence.

#include "softsynth/signal/finite.h"

#include <bit>

namespace tarquil {

namespace {

constexpr uint32_t MAGNITUDE_BITS = 0x7FFFFFFF;
constexpr uint32_t INFINITY_BITS = 0x7F800000; // infinity and every NaN are at or above it

// Sound is told from silence within the first samples, looked at so many at a time.
constexpr uint32_t PIECE = 32;

uint32_t magnitude_bits(float sample) {
    return std::bit_cast<uint32_t>(sample) & MAGNITUDE_BITS;
}

// Magnitudes compare like their bits.
bool all_below(const float* samples, uint32_t count, uint32_t limit_bits) {
    // The integer compare vectorises and reads each sample once.
    uint32_t found = 0;
    for (uint32_t i = 0; i < count; i++)
        found |= uint32_t(magnitude_bits(samples[i]) >= limit_bits);
    return found == 0;
}

bool scrub_from(float* samples, uint32_t count, uint32_t limit_bits) {
    if (all_below(samples, count, limit_bits))
        return false;
    for (uint32_t i = 0; i < count; i++) {
        if (magnitude_bits(samples[i]) >= limit_bits)
            samples[i] = 0.0F;
    }
    return true;
}

} // namespace

bool all_finite(const float* samples, uint32_t count) {
    return all_below(samples, count, INFINITY_BITS);
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
    return scrub_from(samples, count, INFINITY_BITS);
}

bool scrub_for_echo(float* samples, uint32_t count) {
    return scrub_from(samples, count, std::bit_cast<uint32_t>(LARGEST_ECHO) + 1);
}

} // namespace tarquil
