// A wavetable oscillator with a 32-bit fixed-point phase.

#include "softsynth/wavetables/oscillator.h"

#include <algorithm>

#include "common/assertion.h"

namespace tarquil {

namespace {

constexpr uint32_t FRACTION_MASK = 0xFFFFF; // of a phase whose upper 12 bits index the table
constexpr float FRACTION_SCALE = 1.0F / (1U << 20U);

} // namespace

void Oscillator::init(const WaveformStore& waves, OscType new_type, float frequency,
                      float start_phase) {
    type = new_type;
    if (type == OSC_NONE)
        return;
    Wavetable_ret wavetable;
    waves.getWavetable(type, frequency, &wavetable);
    table = wavetable.data;
    table_shift = wavetable.shift;
    increment_scale = oscillator_increment_scale(frequency);
    phase = oscillator_phase(start_phase);
}

template <typename Read>
void Oscillator::render_with(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset,
                             uint32_t length, const Read& read) {
    float* samples = out.get_first_sample_ptr();
    const float* pitches = pitch.get_first_sample_ptr();
    const uint32_t size = out.get_buf_size();
    for (uint32_t t = offset; t < size; t += CONTROL_PERIOD) {
        const uint32_t increment = phase_increment(pitches[t], increment_scale);
        const uint32_t written = std::min(length, size - t);
        uint32_t p = phase;
        for (uint32_t i = t; i < t + written; i++) {
            samples[i] = read(p);
            p += increment;
        }
        phase += increment * std::min(CONTROL_PERIOD, size - t);
    }
}

float Oscillator::read_interpolated(uint32_t at_phase) const {
    const uint32_t i = at_phase >> 20U;
    return linear_interpolate(table[i], table[i + 1],
                              float(at_phase & FRACTION_MASK) * FRACTION_SCALE);
}

void Oscillator::render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE) {
        out.nullify();
        return;
    }
    render_with(out, pitch, offset, CONTROL_PERIOD,
                [this](uint32_t p) { return table[p >> table_shift]; });
}

void Oscillator::render_interpolated(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE || type == OSC_NOISE) {
        render(out, pitch, offset);
        return;
    }
    TARQ_ASSERT(table_shift == 20);
    render_with(out, pitch, offset, CONTROL_PERIOD,
                [this](uint32_t p) { return read_interpolated(p); });
}

void Oscillator::render_controls(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE)
        out.nullify();
    else if (type == OSC_NOISE)
        render_with(out, pitch, offset, 1, [this](uint32_t p) { return table[p >> table_shift]; });
    else
        render_with(out, pitch, offset, 1, [this](uint32_t p) { return read_interpolated(p); });
}

} // namespace tarquil
