// Wavetables made of sines, as their kernel sees them.

#pragma once

#include <cstddef>
#include <cstdint>

namespace tarquil {

// Four sines and cosines of a harmonic, at neighbouring samples.  Turning them gives those of the
// next four samples:
//
//   sine <- sine turn_cosine + cosine turn_sine
//   cosine <- cosine turn_cosine - sine turn_sine
struct HarmonicPhasors {
    float sine[4];
    float cosine[4];
    float turn_sine;
    float turn_cosine;
};

// The kernel writes to sample i of table k the sum of amplitudes[k * max_harmonics + j] times
// harmonic j's sine over the table's first num_harmonics[k] harmonics, in order, starting with 0.
struct HarmonicTables {
    static constexpr uint32_t CHUNK = 32;

    float* samples; // table k from k * stride on
    size_t stride;
    uint32_t size; // of a table, a multiple of CHUNK
    uint32_t num_tables;
    const uint32_t* num_harmonics; // rising, max_harmonics at most
    uint32_t max_harmonics;
    const float* amplitudes;
    HarmonicPhasors* phasors; // at a table's start; turned by the kernel
    float* scratch;           // max_harmonics * CHUNK
};

} // namespace tarquil
