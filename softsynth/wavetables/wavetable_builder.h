// Building band-limited wavetables from their harmonics.

#pragma once

#include <cstddef>
#include <vector>

namespace tarquil {

// Amplitude of harmonic h >= 1 before the taper.
using AmplitudeFunction = float (*)(unsigned);

// Writes a table for each of `num_harmonics` (rising) to `samples`, the k-th from k * `stride` on:
// `size` samples (a power of two, 32 at least) of one cycle with harmonics 1..n.
void build_wavetables(float* samples, size_t stride, unsigned size,
                      const std::vector<unsigned>& num_harmonics, AmplitudeFunction amplitude);

} // namespace tarquil
