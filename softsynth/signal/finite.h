// Finding and removing samples that are not finite, and finding silence.
//
// Settings within range can drive the sound to infinity (two waveshapers in a row at full level).
// Such a value may be heard as silence, but must never enter memory that outlives its note.
// Finite samples keep every bit.

#pragma once

#include <cstdint>

namespace tarquil {

// True when all `count` floats are finite.
bool all_finite(const float* samples, uint32_t count);

// True when all `count` floats are 0 by their bits: -0 is not.
bool all_zero(const float* samples, uint32_t count);

// Replaces every sample that is not finite by 0; returns true when there was one.
bool scrub_non_finite(float* samples, uint32_t count);

// What a reverb or a delay takes in: 120 dB above full scale.  More would ring on at full scale
// for minutes after its note.
inline constexpr float LARGEST_ECHO = 1e6F;

// As scrub_non_finite, and every sample whose magnitude is above LARGEST_ECHO as well.
bool scrub_for_echo(float* samples, uint32_t count);

} // namespace tarquil
