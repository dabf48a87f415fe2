// A wavetable oscillator with a 32-bit fixed-point phase.

#pragma once

#include <cstdint>

#include "softsynth/kernels/phase_increment.h"
#include "softsynth/signal/buffer.h"
#include "softsynth/wavetables/waveform.h"

namespace tarquil {

// Phase increment per sample of 1 Hz: 2^32 / 44100.
inline constexpr double PHASE_INCREMENT_PER_HZ = 97391.54866213152;

// Phase increment per sample at a pitch ratio of 1, for a base frequency in Hz.
inline float oscillator_increment_scale(float frequency) {
    return float(PHASE_INCREMENT_PER_HZ * double(frequency));
}

// A phase in cycles (0 to 127) as an oscillator counts it: a cycle is 2^32.
inline uint32_t oscillator_phase(float cycles) {
    return uint32_t(int64_t(cycles * 65536.0F * 65536.0F));
}

inline float linear_interpolate(float a, float b, float t) {
    return (b - a) * t + a;
}

class Oscillator {
  public:
    // `frequency` in Hz is the pitch ratio 1; it also chooses the table of `waves`, once.  `phase`
    // in cycles.
    void init(const WaveformStore& waves, OscType type, float frequency, float phase);

    // Writes the samples of `out` from `offset` on.  `pitch` holds ratios to the base frequency and
    // is read at the first of every 32 samples, counted from `offset`.  A silent oscillator clears
    // the whole of `out`.
    void render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset);

    // The same with linear interpolation between table samples (noise: without).
    void render_interpolated(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset);

    // As render_interpolated, but writes only the samples at which `pitch` is read.
    void render_controls(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset);

    // In cycles, 0..1.
    [[nodiscard]] float get_phase() const { return float(double(phase) / 4294967296.0); }

  private:
    // Writes the first `length` of every CONTROL_PERIOD samples.
    template <typename Read>
    void render_with(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset, uint32_t length,
                     const Read& read);
    [[nodiscard]] float read_interpolated(uint32_t at_phase) const;

    OscType type = OSC_NONE;
    const float* table = nullptr;
    uint32_t table_shift = 0;
    float increment_scale = 0.0F; // phase increment per sample for a pitch ratio of 1
    uint32_t phase = 0;           // one cycle is 2^32
};

} // namespace tarquil
