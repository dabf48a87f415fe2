// The detuned copies of one oscillator of a voice.
//
// The copies' fields lie in arrays of their own, 16 bytes a copy, so that rendering can walk many
// copies for the same samples: the samples stay in a small block of accumulators while the copies
// are added in order, and are written once.

#pragma once

#include <cstdint>

#include "softsynth/buffer.h"
#include "softsynth/kernels/oscillator_copies.h"
#include "softsynth/waveform.h"

inline constexpr int MAX_MULTI_OSC_WIDTH = 255;

class OscillatorGroup {
  public:
    // Starts a note with no copy yet.
    void init(OscType type);
    // As Oscillator::init, for the next copy (at most MAX_MULTI_OSC_WIDTH).
    void add_copy(float frequency, float phase);

    [[nodiscard]] int get_count() const { return int(count); }

    // The sum of all copies, each rendered as by Oscillator::render, added in order.
    void render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset);

  private:
    static constexpr uint32_t PADDED_WIDTH = MAX_OSCILLATOR_COPIES;
    static_assert(PADDED_WIDTH >= MAX_MULTI_OSC_WIDTH);

    OscType type = OSC_NONE;
    uint32_t count = 0;
    uint32_t runs = 0; // of neighbouring copies with the same table
    uint32_t table_shift = 0;
    alignas(16) uint32_t phase[PADDED_WIDTH] = {};
    alignas(16) float increment_scale[PADDED_WIDTH] = {};
    alignas(16) const float* table[PADDED_WIDTH] = {};
};
