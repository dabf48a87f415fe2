// The detuned copies of one oscillator of a voice.
//
// The copies' fields lie in arrays of their own, 16 bytes a copy, so that rendering can walk many
// copies for the same samples.

#pragma once

#include <cstdint>

#include "softsynth/signal/buffer.h"
#include "softsynth/wavetables/copy_tuning.h"

namespace tarquil {

inline constexpr int MAX_MULTI_OSC_WIDTH = 255;

class OscillatorGroup {
  public:
    // Starts a note; `phases` has a start phase per copy, 2^32 is a cycle.
    void init(const TunedCopies& tuned, const uint32_t* phases);

    // Starts a note with no copy yet.
    void init(OscType type) { copies.init(type); }
    // As Oscillator::init, for the next copy (at most MAX_MULTI_OSC_WIDTH).
    void add_copy(const WaveformStore& waves, float frequency, float start_phase);

    [[nodiscard]] bool is_off() const { return copies.get_type() == OSC_NONE; }
    [[nodiscard]] int get_count() const { return int(copies.get_count()); }

    // The sum of all copies, each rendered as by Oscillator::render, added in order.
    void render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset);

  private:
    static_assert(MAX_OSCILLATOR_COPIES > MAX_MULTI_OSC_WIDTH);

    TunedCopies copies;
    alignas(16) uint32_t phase[MAX_OSCILLATOR_COPIES] = {};
};

} // namespace tarquil
