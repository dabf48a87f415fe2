// A wavetable oscillator with a 32-bit fixed-point phase.

#include "softsynth/oscillator.h"

#include <algorithm>

#include "common/assertion.h"

namespace {

constexpr uint32_t FRACTION_MASK = 0xFFFFF; // of a phase whose upper 12 bits index the table
constexpr float FRACTION_SCALE = 1.0F / (1U << 20U);

} // namespace

void Oscillator::init(OscType new_type, float frequency, float start_phase) {
    type = new_type;
    if (type == OSC_NONE)
        return;
    Wavetable_ret wavetable;
    WaveformStore::instance().getWavetable(type, frequency, &wavetable);
    table = wavetable.data;
    table_shift = wavetable.shift;
    increment_scale = oscillator_increment_scale(frequency);
    phase = oscillator_phase(start_phase);
}

template <typename Read>
void Oscillator::render_with(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset,
                             const Read& read) {
    float* samples = out.get_first_sample_ptr();
    const float* pitches = pitch.get_first_sample_ptr();
    const uint32_t size = out.get_buf_size();
    for (uint32_t t = offset; t < size; t += CONTROL_PERIOD) {
        const uint32_t increment = phase_increment(pitches[t], increment_scale);
        const uint32_t end = std::min(t + CONTROL_PERIOD, size);
        for (uint32_t i = t; i < end; i++) {
            samples[i] = read(phase);
            phase += increment;
        }
    }
}

void Oscillator::render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE) {
        out.nullify();
        return;
    }
    render_with(out, pitch, offset, [this](uint32_t p) { return table[p >> table_shift]; });
}

void Oscillator::render_interpolated(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE || type == OSC_NOISE) {
        render(out, pitch, offset);
        return;
    }
    TARQ_ASSERT(table_shift == 20);
    render_with(out, pitch, offset, [this](uint32_t p) {
        const uint32_t i = p >> 20U;
        return linear_interpolate(table[i], table[i + 1],
                                  float(p & FRACTION_MASK) * FRACTION_SCALE);
    });
}
