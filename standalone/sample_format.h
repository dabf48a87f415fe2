// Sound as the bytes that a device takes.

#pragma once

#include <cstddef>
#include <cstdint>

namespace tarquil {

// In the processor's byte order.
enum class SampleFormat {
    FLOAT,
    INT32,
    INT24,        // the lower three bytes of four
    INT24_PACKED, // three bytes
    INT16,
};

size_t sample_bytes(SampleFormat format);

// Writes the frames interleaved, in `num_channels` (at least 1) channels: one takes the mean of
// both sides, those behind the second are silent.  Integers are rounded to the nearest; 1 is the
// largest, and what lies beyond full scale becomes full scale.
void write_frames(SampleFormat format, unsigned num_channels, const float* left, const float* right,
                  uint32_t frames, void* bytes);

} // namespace tarquil
