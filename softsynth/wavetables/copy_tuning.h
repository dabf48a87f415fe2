// The pitches of an oscillator's detuned copies, and a cache of them.
//
// A copy's frequency takes an exponential and a choice of table, several hundred of them a note.
// Music repeats its notes, so what was computed before is looked up.

#pragma once

#include <cstdint>

#include "softsynth/kernels/oscillator_copies.h"
#include "softsynth/wavetables/waveform.h"

namespace tarquil {

// What the pitches depend on: copy j of `count` sounds at note `base` + `step` * (j - count / 2),
// in semitones.
struct CopyTuning {
    OscType type = OSC_NONE;
    uint32_t count = 0; // odd, up to MAX_OSCILLATOR_COPIES
    float base = 0.0F;
    float step = 0.0F;

    bool operator==(const CopyTuning&) const = default;
};

// The copies themselves, in arrays with an entry per copy as OscillatorCopies has them.
class TunedCopies {
  public:
    TunedCopies() = default;
    TunedCopies(const TunedCopies& other) { *this = other; }
    TunedCopies& operator=(const TunedCopies& other); // of the entries in use

    void init(OscType new_type);
    // Appends a copy of that frequency in Hz, at most MAX_OSCILLATOR_COPIES.
    void add(const WaveformStore& waves, float frequency);
    void init(const WaveformStore& waves, const CopyTuning& tuning);

    [[nodiscard]] OscType get_type() const { return type; }
    [[nodiscard]] uint32_t get_count() const { return count; }
    // For an oscillator that is not off.
    [[nodiscard]] OscillatorCopies with_phases(uint32_t* phases) const {
        return {phases, increment_scale, table, count, runs, table_shift};
    }

  private:
    OscType type = OSC_NONE;
    uint32_t count = 0;
    uint32_t runs = 0; // of neighbouring copies with the same table
    uint32_t table_shift = 0;
    alignas(16) float increment_scale[MAX_OSCILLATOR_COPIES] = {};
    alignas(16) const float* table[MAX_OSCILLATOR_COPIES] = {};
};

// The tunings of recent notes, about 200 KB.
class CopyTuningCache {
  public:
    // Computes what it does not hold; valid until the next call.  All calls name the same `waves`.
    const TunedCopies& get(const WaveformStore& waves, const CopyTuning& tuning);

  private:
    static constexpr unsigned SIZE = 64; // a power of two

    struct Entry {
        CopyTuning tuning;
        TunedCopies copies;
    };
    Entry entries[SIZE];
};

} // namespace tarquil
